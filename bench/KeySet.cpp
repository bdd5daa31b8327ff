#include "KeySet.h"

#include "HostPlatform.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <map>
#include <random>

namespace {
bool isInteger(size_t index)
{
    return index % 10 < 4;
}

// The tag of a key's element; a value, another one for the user, in the forms of the two files.
QByteArray tag(size_t index)
{
    return isInteger(index) ? "int" : index % 10 < 7 ? "bool" : index % 10 < 8 ? "double" : "string";
}

QByteArray value(size_t index, bool ofUser)
{
    QByteArray const number = QByteArray::number(qulonglong(index % 100 + (ofUser ? 1 : 0)));
    if (isInteger(index))
        return number;
    if (index % 10 < 7)
        return ofUser ? "Y" : "false";
    return index % 10 < 8 ? QByteArray(number + ".5") : QByteArray("text " + number);
}

// A host's own store: only those may be made beside the main one.
struct OtherStore : PR_Preference {
    explicit OtherStore(QString const &name)
        : PR_Preference(name, false, true)
    {
    }
};

std::vector<QString> shuffled(std::vector<QString> keys)
{
    static std::mt19937 random(1);
    std::shuffle(keys.begin(), keys.end(), random);
    for (QString &key : keys)
        key = KeySet::ownText(key);
    return keys;
}
} // namespace

void KeySet::write(QString const &path, QByteArray const &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write the benchmark's files");
}

KeySet const &KeySet::ofSize(int size)
{
    static std::map<int, std::unique_ptr<KeySet>> sets;
    std::unique_ptr<KeySet> &set = sets[size];
    if (!set)
        set.reset(new KeySet(size));
    return *set;
}

KeySet::KeySet(int size)
    : m_userName(m_folder.filePath(QStringLiteral("user.pref")))
{
    for (size_t i = 0; i < size_t(size); ++i) {
        QString const key =
            QStringLiteral("DRAWING_VIEW_%1_TOOL_SETTING_%2").arg(QLatin1Char('A' + char(i % 30))).arg(i);
        QByteArray const id = key.toUtf8();
        m_keys.push_back(key);
        m_definitions += "  <" + tag(i) + " id=\"" + id + "\" value=\"" + value(i, false)
            + "\" shortDesc=\"Label of the setting " + QByteArray::number(qulonglong(i))
            + "\" longDesc=\"What the setting does, in a sentence of the usual length.\"/>\n";
        if (i % 7 < 2)
            m_userFile += " <" + tag(i) + " id=\"" + id + "\" value=\"" + value(i, true) + "\"/>\n";
    }
    m_definitions = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<preferences>\n <category id=\"General\">\n"
        + m_definitions + " </category>\n</preferences>\n";
    m_userFile = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<preferences>\n" + m_userFile + "</preferences>\n";
    QDir().mkpath(m_folder.filePath(QStringLiteral("resources")));
    write(m_folder.filePath(QStringLiteral("resources/prefs.xml")), m_definitions);
    write(m_folder.filePath(QStringLiteral("user-pref.xml")), m_userFile);
}

std::unique_ptr<PR_Preference> KeySet::load() const
{
    HostPlatform::current().installFolder = m_folder.path();
    return std::unique_ptr<PR_Preference>(PR_Preference::createPreference(m_userName));
}

std::unique_ptr<PR_Preference> KeySet::loadOther() const
{
    HostPlatform::current().installFolder = m_folder.path();
    return std::make_unique<OtherStore>(m_userName);
}

std::vector<QString> KeySet::shuffledKeys() const
{
    return shuffled(m_keys);
}

std::vector<QString> KeySet::shuffledIntegers() const
{
    std::vector<QString> keys;
    for (size_t i = 0; i < m_keys.size(); ++i) {
        if (isInteger(i))
            keys.push_back(m_keys[i]);
    }
    return shuffled(std::move(keys));
}

std::vector<QString> KeySet::missingKeys() const
{
    std::vector<QString> keys = m_keys;
    for (QString &key : keys)
        key += QLatin1String("_X");
    return shuffled(std::move(keys));
}
