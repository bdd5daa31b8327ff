#include "FaultTest.h"

#include <QDir>
#include <QFileInfo>

#include <map>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {
constexpr int HostileSet = 5; // in the hostile file, beside what is hostile in it
constexpr int UserSet = 1;
constexpr int BackupSet = 2;
constexpr int SavedSet = 7;

enum class Expected { Read, Refused, Either };

struct Row {
    char const *name;
    Expected expected;
    std::function<QByteArray(QByteArray const &open, QByteArray const &items, QByteArray const &close)> content;
};

QByteArray utf16(QByteArray const &text, bool bigEndian)
{
    QByteArray bytes(bigEndian ? "\xFE\xFF" : "\xFF\xFE", 2);
    for (char const c : text)
        bytes += bigEndian ? QByteArray(1, '\0') + c : QByteArray(1, c) + '\0';
    return bytes;
}

QByteArray nested(int depth)
{
    return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
}

QByteArray attributes(int count)
{
    QByteArray element = "<string id=\"MANY\" value=\"\"";
    for (int i = 0; i < count; ++i)
        element += " a" + QByteArray::number(i) + "=\"\"";
    return element + "/>";
}

QByteArray nestedEntities()
{
    QByteArray declarations = "<!DOCTYPE preferences [<!ENTITY e0 \"aaaaaaaaaa\">";
    for (int i = 1; i < 12; ++i) {
        QByteArray const inner = "&e" + QByteArray::number(i - 1) + ';';
        declarations += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    return declarations + "]>";
}

// Where the external entities point at; the text in it may come up nowhere.
QByteArray const secret = "text-of-the-external-file";
QString const secretFile = u"secret.txt"_s;

std::vector<Row> rows(QByteArray const &secretPath)
{
    // Puts texts into the file: before its root, or before the items.
    auto const with = [](QByteArray const &prolog, QByteArray const &first) {
        return [=](QByteArray const &open, QByteArray const &items, QByteArray const &close) -> QByteArray {
            return prolog + open + first + items + close;
        };
    };
    auto const multiByte = [](bool bigEndian) {
        return [=](QByteArray const &open, QByteArray const &items, QByteArray const &close) -> QByteArray {
            return utf16(open + items + close, bigEndian);
        };
    };
    QByteArray const cdata = "<string id=\"CDATA\">";
    QByteArray const longEntity = "<!DOCTYPE preferences [<!ENTITY e \"" + QByteArray(4000, 'a') + "\">]>";
    QByteArray const external = "<!DOCTYPE preferences [<!ENTITY e SYSTEM \"file://" + secretPath + "\">]>";
    QByteArray const externalSubset = "<!DOCTYPE preferences SYSTEM \"file://" + secretPath + "\">";
    QByteArray const parameter = "<!DOCTYPE preferences [<!ENTITY % e SYSTEM \"file://" + secretPath + "\"> %e;]>";
    return {
        { "nested 10,000 deep", Expected::Refused, with({}, nested(10000)) },
        { "nested 1,000,000 deep", Expected::Refused, with({}, nested(1000000)) },
        { "1,000,000 elements left open", Expected::Refused, with({}, QByteArray("<a>").repeated(1000000)) },
        { "200,000 attributes", Expected::Refused, with({}, attributes(200000)) },
        { "nested entities in a text", Expected::Refused, with(nestedEntities(), cdata + "&e11;</string>") },
        { "nested entities in an attribute", Expected::Refused,
            with(nestedEntities(), "<string id=\"A\" value=\"&e11;\"/>") },
        { "a long entity 100,000 times", Expected::Refused,
            with(longEntity, cdata + QByteArray("&e;").repeated(100000) + "</string>") },
        { "external entity", Expected::Either, with(external, cdata + "&e;</string>") },
        { "external entity in an attribute", Expected::Refused, with(external, "<string id=\"A\" value=\"&e;\"/>") },
        { "external subset", Expected::Either, with(externalSubset, {}) },
        { "external parameter entity", Expected::Either, with(parameter, {}) },
        { "attribute of 64 MB", Expected::Read,
            with({}, "<string id=\"LONG\" value=\"" + QByteArray(64 << 20, 'a') + "\"/>") },
        { "1,000,000 elements of one id", Expected::Either,
            with({}, QByteArray("<string id=\"ONE\" value=\"a\"/>\n").repeated(1000000)) },
        { "nothing but NULs", Expected::Refused, [](auto &&...) { return QByteArray(4096, '\0'); } },
        { "NULs between elements", Expected::Refused, with({}, QByteArray(3, '\0')) },
        { "NUL in an attribute", Expected::Refused,
            with({}, "<string id=\"N\" value=\"" + QByteArray(1, '\0') + "\"/>") },
        { "invalid UTF-8", Expected::Refused, with({}, "<string id=\"U\" value=\"\xC3(\xFF\"/>") },
        { "UTF-16, little endian", Expected::Read, multiByte(false) },
        { "UTF-16, big endian", Expected::Read, multiByte(true) },
        { "UTF-16 declared in ASCII, nested 10,000 deep", Expected::Refused,
            [](QByteArray const &open, QByteArray const &items, QByteArray const &close) -> QByteArray {
                return "<?xml version=\"1.0\" encoding=\"UTF-16LE\"?>"
                    + utf16(open + nested(10000) + items + close, false).mid(2);
            } },
    };
}

// What a hostile file stands for: its place, and the sets that a load finds when it is read or refused.
struct Role {
    char const *name;
    char const *file;
    int read;
    int refused;
    char const *report; // when it is refused
    QByteArray open = "<preferences><category id=\"General\">";
    QByteArray close = "</category></preferences>";
};

std::vector<Role> const roles{
    { "user file with backup", "user.xml", HostileSet, BackupSet, "Backup preference file has been restored.",
        "<preferences>", "</preferences>" },
    { "user file", "user.xml", HostileSet, ValueSet::Default, "Default preferences will be loaded instead.",
        "<preferences>", "</preferences>" },
    { "definitions", "install/resources/prefs.xml", UserSet, ValueSet::Mixed, "Unable to parse prefereces file" },
    { "override", "install/resources/prefs_override.xml", HostileSet, ValueSet::Default, "" },
    { "preference set", "install/resources/preferenceSets/norvelle/team.xml", HostileSet, ValueSet::Default, "" },
    { "legacy text", "user", ValueSet::Default, ValueSet::Default, "", "<preferences>", "</preferences>" },
};
} // namespace

class HostileFilesTest : public FaultTest {
protected:
    // The elements of a set, which are definitions as well.
    static QByteArray items(int set)
    {
        QByteArray const file = ValueSet::userFile(set);
        auto const begin = file.indexOf('>') + 1;
        return file.mid(begin, file.lastIndexOf("</") - begin);
    }

    QByteArray put(Row const &row, Role const &role, QString const &folder) const
    {
        QByteArray const content = row.content(role.open, items(HostileSet), role.close);
        writeFile(folder + u"install/resources/prefs.xml"_s, ValueSet::definitions());
        if (qstrcmp(role.name, "definitions") == 0)
            writeFile(folder + u"user.xml"_s, ValueSet::userFile(UserSet));
        else if (qstrcmp(role.name, "preference set") == 0)
            writeFile(
                folder + u"user.xml"_s, "<preferences><string id=\"PREFERENCE_SET\" value=\"team\"/></preferences>");
        if (qstrcmp(role.name, "user file with backup") == 0)
            writeFile(folder + u"user.xml~"_s, ValueSet::userFile(BackupSet));
        writeFile(folder + QLatin1String(role.file), content);
        return content;
    }

    // What went wrong; each step runs in a process of its own.
    QStringList faults(Row const &row, Role const &role, QString const &folder, qint64 &slowest) const
    {
        QByteArray const content = put(row, role, folder);
        QStringList faults;
        auto const require = [&](bool holds, QString const &fault) {
            if (!holds)
                faults.append(fault);
        };
        QString const store = path(folder + u"user"_s);
        auto const step = [&](char const *verb, QString const &install, QStringList const &more = {}) {
            Limits limits;
            limits.memory = 2ULL << 30;
            limits.milliseconds = 20000;
            Outcome const outcome = Program::run(program, arguments(verb, store, more, install), limits);
            require(outcome.status == 0,
                u"%1 %2 after %3 ms: %4"_s.arg(QLatin1String(verb), outcome.status ? u"failed"_s : u"crashed or hung"_s)
                    .arg(outcome.milliseconds)
                    .arg(QString::fromUtf8(outcome.errors.right(200)).trimmed()));
            slowest = std::max(slowest, outcome.milliseconds);
            return outcome;
        };
        QString const install = folder + u"install"_s;

        Outcome const load = step("load", install);
        if (!load.status)
            return faults;
        int const found = load.output.toInt();
        bool const isRefused = found == role.refused && row.expected != Expected::Read;
        require(isRefused || (found == role.read && row.expected != Expected::Refused), u"found %1"_s.arg(found));
        bool const isText = qstrcmp(role.name, "legacy text") == 0;
        if (isRefused)
            require(load.errors.contains(role.report), u"reported "_s + QString::fromUtf8(load.errors));
        else
            require(!load.errors.contains("corrupted") && !load.errors.contains("parse"),
                u"reported "_s + QString::fromUtf8(load.errors));
        if (isRefused && role.refused == BackupSet)
            require(readFile(folder + u"user.xml"_s) == ValueSet::userFile(BackupSet), u"the backup is not restored"_s);
        if (content.contains(secretFile.toUtf8()))
            require(!step("values", install).output.contains(secret), u"an external file was read"_s);

        step("save", install, { QString::number(SavedSet) });
        require(step("load", u"install"_s).output.toInt() == SavedSet, u"no load after a save"_s);
        if (isRefused && !isText && qstrcmp(role.file, "user.xml") == 0)
            require(readFile(folder + u"user.xml.bad"_s) == content, u"the damaged file is not kept"_s);
        int const backup = ValueSet::inFile(store + u".xml~"_s);
        if (isRefused && role.refused == BackupSet)
            require(backup == BackupSet, u"backup %1"_s.arg(backup));
        else if (qstrcmp(role.name, "definitions") == 0)
            require(backup == UserSet, u"backup %1"_s.arg(backup));
        return faults;
    }
};

TEST_F(HostileFilesTest, EndWithAUsableStore)
{
    writeFile(secretFile, secret);
    std::vector<Row> const table = rows(path(secretFile).toUtf8());
    std::mutex mutex;
    std::map<std::string, qint64> slowest;
    forSome(table.size() * roles.size(), 11, [&](std::size_t i) {
        Row const &row = table[i / roles.size()];
        Role const &role = roles[i % roles.size()];
        QString const folder = u"hostile%1/"_s.arg(i);
        qint64 milliseconds = 0;
        QStringList const found = faults(row, role, folder, milliseconds);
        QDir(path(folder)).removeRecursively();
        std::lock_guard const lock(mutex);
        slowest[row.name] = std::max(slowest[row.name], milliseconds);
        EXPECT_TRUE(found.isEmpty()) << row.name << " as " << role.name << ": " << found.join(u"; "_s);
    });
    for (auto const &[name, milliseconds] : slowest) {
        if (milliseconds > 1000)
            std::printf("%s: up to %d ms\n", name.c_str(), int(milliseconds));
    }
}

// In this process: the files are small, and there are many.
TEST_F(HostileFilesTest, FilesCutAtEveryLength)
{
    QByteArray const whole =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<preferences>\n <category id=\"General\">\n"
        "  <string id=\"FIRST\" value=\"a&amp;\xC3\xA4\"/>\n  <string id=\"NEW\">\n   <![CDATA[a\nb]]>\n"
        "  </string>\n </category>\n</preferences>\n";
    int const end = static_cast<int>(whole.lastIndexOf('>')) + 1;
    QString const store = path(u"cut/user"_s);
    QString const folder = u"cut/install/resources/"_s;
    host.installFolder = path(u"cut/install"_s);
    for (char const *const file :
        { "cut/user.xml", "cut/user", "cut/install/resources/prefs.xml", "cut/install/resources/prefs_override.xml" }) {
        QString const name = QLatin1String(file);
        for (int length = 0; length <= whole.size(); ++length) {
            SCOPED_TRACE(std::string(file) + ' ' + std::to_string(length));
            writeFile(folder + u"prefs.xml"_s, ValueSet::definitions());
            writeFile(folder + u"prefs_override.xml"_s, "<preferences/>");
            writeFile(u"cut/user.xml"_s, ValueSet::userFile(UserSet));
            writeFile(u"cut/user.xml~"_s, ValueSet::userFile(BackupSet));
            writeFile(name, whole.left(length));
            bool const isUserFile = name == u"cut/user.xml"_s;
            {
                TestStore loaded(store);
                bool const isWhole = length >= end;
                if (isUserFile) {
                    EXPECT_EQ(ValueSet::read(loaded), isWhole ? ValueSet::Default : BackupSet);
                }
                ValueSet::write(loaded, SavedSet);
                loaded.save();
                EXPECT_EQ(loaded.saveStatus().state, PR_Preference::SaveStatus::Saved);
                EXPECT_EQ(takeReports().empty(), isWhole || name == u"cut/user"_s || name.endsWith(u"override.xml"_s));
            }
            EXPECT_EQ(ValueSet::inFile(store + u".xml"_s), SavedSet);
            EXPECT_EQ(ValueSet::inFile(store + u".xml~"_s),
                isUserFile ? (length < end ? BackupSet : ValueSet::Default) : UserSet);
        }
        QFile::remove(path(u"cut/user"_s));
    }
}
