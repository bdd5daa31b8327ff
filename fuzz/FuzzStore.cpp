#include "FuzzStore.h"

#include "HostPlatform.h"
#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_FontItem.h"
#include "PR_IntItem.h"
#include "PR_KeyItem.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {
// The application and the host of the process, and the folder of its files.
class Process {
public:
    Process()
    {
        HostPlatform &host = HostPlatform::current();
        host.installFolder = m_folder.path();
        host.fonts = QStringList{ u"Arial"_s, u"Courier"_s, u"Times"_s };
        host.report = [](HostReport const &) {};
        require(m_folder.isValid() && QDir(m_folder.path()).mkpath(u"resources"_s), "there is a folder");
    }

    static QString path(QString const &name)
    {
        static Process const process;
        return process.m_folder.filePath(name);
    }

private:
    int m_argumentCount = 1;
    char m_name[5] = "fuzz";
    char *m_arguments[2] = { m_name, nullptr };
    QCoreApplication m_application{ m_argumentCount, m_arguments };
    QTemporaryDir m_folder;
};

// Whether XML can hold each character.
bool fitsXml(QString const &text)
{
    auto const characters = text.toUcs4();
    auto const isUnfit = [](uint c) {
        return (c < 0x20 && c != '\t' && c != '\n' && c != '\r') || c == 0xFFFE || c == 0xFFFF;
    };
    bool const hasLoneSurrogate =
        QString::fromUcs4(reinterpret_cast<char32_t const *>(characters.data()), characters.size()) != text;
    return !hasLoneSurrogate && std::none_of(characters.begin(), characters.end(), isUnfit);
}
} // namespace

void require(bool holds, char const *what, QString const &detail)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s %s\n", what, detail.toUtf8().toPercentEncoding(" ~()+,=").constData());
    std::abort();
}

QString FuzzStore::path(File file)
{
    static QString const names[] = { u"resources/prefs.xml"_s, u"resources/prefs_override.xml"_s, u"user-pref.xml"_s,
        u"user-pref.xml~"_s, u"user-pref.xml.bad"_s, u"user.pref"_s };
    return Process::path(names[file]);
}

std::optional<QString> textFromFile(PR_PrefItem const *item)
{
    QString const text = item->valueAsString();
    if (item->getOrigin() != PR_PrefItem::OriginUser)
        return text;
    if (auto const *number = dynamic_cast<PR_DoubleItem const *>(item))
        return QString::number(QString::number(number->value(), 'g', 6).toDouble(), 'f', 6);
    // Not every key that Qt can hold has a text that Qt reads back.
    auto const *shortcut = dynamic_cast<PR_KeyItem const *>(item);
    bool const readsBack = !shortcut || QKeySequence(text, QKeySequence::PortableText) == shortcut->value();
    return readsBack && fitsXml(text) ? std::optional(text) : std::nullopt;
}

void FuzzStore::write(File file, QByteArray const &bytes)
{
    QFile output(path(file));
    require(output.open(QIODevice::WriteOnly) && output.write(bytes) == bytes.size(), "a file can be written");
}

QByteArray FuzzStore::read(File file)
{
    QFile input(path(file));
    return input.open(QIODevice::ReadOnly) ? input.readAll() : QByteArray();
}

void FuzzStore::removeUserFiles()
{
    for (File const file : { UserXml, UserBackup, UserDamaged, UserText })
        QFile::remove(path(file));
}

void FuzzStore::writeDefinitions()
{
    QByteArray items;
    for (QByteArray const prefix : { "", "L" }) {
        for (QByteArray const type : { "bool", "color", "double", "font", "int", "shortcut", "string" })
            items += '<' + type + " id='" + prefix + type.left(2).toUpper() + "' value='1' facilityOverride='"
                + (prefix.isEmpty() ? "false" : "true") + "'/>";
    }
    write(Definitions,
        "<preferences><category id='General'>" + items
            + "</category><category id='Internal'><int id='I1' value='1'/><shortcut id='I2' value='F1'/></category>"
              "</preferences>");
}

FuzzStore::FuzzStore()
    : PR_Preference(path(UserText), false, true)
{
}

bool FuzzStore::State::operator==(State const &other) const
{
    return tag == other.tag && text == other.text && origin == other.origin;
}

std::map<QString, FuzzStore::State> FuzzStore::states() const
{
    std::map<QString, State> all;
    for (PR_PrefItem const *item : *this)
        all[item->getKey()] = { item->getTag(), item->valueAsString(), item->getOrigin() };
    return all;
}

void FuzzStore::checkReads() const
{
    QString last;
    for (PR_PrefItem *item : *this) {
        QString const key = item->getKey();
        require(item == *begin() || last < key, "keys ascend and are unique", key);
        require(find(key) == item && getStringValue(key, {}) == item->valueAsString(), "an item is found by key", key);
        last = key;

        auto const agree = [&key](auto const *typed, auto const &reference, auto const &value) {
            require(!typed || &reference == &typed->value(), "a read by reference gives the item's value", key);
            require(!typed || value == typed->value() || value != value, "a read by value gives the item's", key);
        };
        agree(dynamic_cast<PR_BoolItem *>(item), getBool(key), getBoolValue(key, false));
        agree(dynamic_cast<PR_IntItem *>(item), getInt(key), getIntValue(key, 0));
        agree(dynamic_cast<PR_DoubleItem *>(item), getDouble(key), getDoubleValue(key, 0));
        agree(dynamic_cast<PR_RgbaItem *>(item), getRgba(key), getRgbaValue(key, 0));
        agree(dynamic_cast<PR_EnumItem *>(item), getEnum(key), getEnumValue(key, 0));
        agree(dynamic_cast<PR_StringItem *>(item), getString(key), getStringValue(key, {}));
        agree(dynamic_cast<PR_KeyItem *>(item), getKey(key), getKey(key));
        auto *const font = dynamic_cast<PR_FontItem *>(item);
        require(getFontValue(key, u"none"_s) == (font ? font->fontName() : u"none"_s), "a font has a name", key);
    }
}

QByteArray FuzzStore::savedBytes()
{
    save();
    require(saveStatus().state == SaveStatus::Saved, "a save succeeds", saveStatus().reason);
    return read(UserXml);
}

void FuzzStore::checkRoundTrip()
{
    QByteArray const bytes = savedBytes();
    FuzzStore second;
    require(second.getErrorCode() == getErrorCode(), "a saved file can be read");
    auto const states = second.states();
    bool isExact = true;
    for (PR_PrefItem const *item : *this) {
        std::optional<QString> const text = textFromFile(item);
        bool const keyFits = fitsXml(item->getKey());
        isExact = isExact && text && keyFits;
        if (!keyFits)
            continue;
        auto const found = states.find(item->getKey());
        require(found != states.end(), "a key comes back", item->getKey());
        State const expected{ item->getTag(), text.value_or(found->second.text), item->getOrigin() };
        require(found->second == expected, "an item comes back", item->getKey() + u'=' + item->valueAsString());
    }
    require(second.states().size() <= this->states().size(), "no item is new");

    QByteArray const secondBytes = second.savedBytes();
    require(!isExact || secondBytes == bytes, "a second save gives the same bytes");
    FuzzStore third;
    require(third.states() == states, "a second load gives the same items");
    require(third.savedBytes() == secondBytes, "a third save gives the same bytes");
}
