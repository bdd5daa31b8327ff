#include "TestSupport.h"

#include "PR_PrefItem.h"

#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
// The outcome for each file, in their order; what xmllint says stands in the trace of a failure.
std::vector<bool> validate(QString const &schema, QStringList const &files, QString *messages)
{
    QProcess xmllint;
    xmllint.start(u"xmllint"_s, QStringList{ u"--noout"_s, u"--relaxng"_s, schema } + files);
    EXPECT_TRUE(xmllint.waitForFinished()) << xmllint.errorString();
    *messages = QString::fromUtf8(xmllint.readAllStandardError());
    QStringList const lines = messages->split(u'\n');
    std::vector<bool> outcome;
    for (QString const &file : files)
        outcome.push_back(lines.contains(QString(file + u" validates"_s)));
    return outcome;
}

QStringList xmlFilesBelow(QString const &folder)
{
    QStringList files;
    for (QDirIterator xml(folder, { u"*.xml"_s }, QDir::Files, QDirIterator::Subdirectories); xml.hasNext();)
        files.append(xml.next());
    EXPECT_FALSE(files.empty()) << folder;
    return files;
}

class SchemaTest : public HostTest {
protected:
    // An item element of the key K, and the text of its value in a store that loaded it.
    using Row = std::pair<QByteArray, char const *>;

    // The schema accepts each element, and a store gives its value.
    template <class Load> void expectValues(QString const &schema, std::vector<Row> const &rows, Load const &load)
    {
        QStringList files;
        for (Row const &row : rows)
            files.append(writeFile(QString::number(files.size()) + u".xml"_s, row.first));
        QString messages;
        std::vector<bool> const outcome = validate(schema, files, &messages);
        for (size_t i = 0; i < rows.size(); ++i) {
            SCOPED_TRACE(rows[i].first.constData());
            EXPECT_TRUE(outcome[i]) << messages;
            std::unique_ptr<TestStore> const store = load(rows[i].first);
            takeReports();
            PR_PrefItem const *const item = store->find(u"K"_s);
            EXPECT_EQ(item ? item->valueAsString() : u"no item"_s, QLatin1String(rows[i].second));
        }
    }

    QString const m_definitions = QStringLiteral(BRIVANT_RESOURCES "/schema/definitions.rng");
    QString const m_userFile = QStringLiteral(BRIVANT_RESOURCES "/schema/user-file.rng");
};
} // namespace

TEST_F(SchemaTest, ShippedFilesNameTheirSchemaAndAreValid)
{
    QDir const resources(QStringLiteral(BRIVANT_RESOURCES));
    for (QString const &name : xmlFilesBelow(resources.path())) {
        SCOPED_TRACE(testing::PrintToString(name));
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        static QRegularExpression const model(
            u"^<\\?xml-model href=\"(.*)\" schematypens=\"http://relaxng.org/ns/structure/1.0\"\\?>$"_s,
            QRegularExpression::MultilineOption);
        // An example stands for its copy beside the main files.
        QDir const place = name.contains(u"/examples/"_s) ? resources : QFileInfo(name).dir();
        QString const schema = place.absoluteFilePath(model.match(QString::fromUtf8(file.readAll())).captured(1));
        QString messages;
        EXPECT_TRUE(validate(schema, { name }, &messages)[0]) << messages;
    }
}

TEST_F(SchemaTest, RefusesTheDataFilesThatStandInAFolderForIt)
{
    for (char const *kind : { "definitions", "overrides", "preferenceSets", "user-files", "user-files-of-machine" }) {
        QStringList const files = xmlFilesBelow(QStringLiteral(BRIVANT_TEST_DATA "/check/") + QLatin1String(kind));
        QString messages;
        std::vector<bool> const outcome =
            validate(std::string(kind).find("user") == 0 ? m_userFile : m_definitions, files, &messages);
        for (size_t i = 0; i < outcome.size(); ++i)
            EXPECT_NE(outcome[i], files[qsizetype(i)].contains(u"/refused-by-schema/"_s))
                << files[qsizetype(i)] << messages;
    }
}

TEST_F(SchemaTest, AcceptsWhatTheLoaderOfDefinitionsReads)
{
    std::vector<Row> rows{
        { "<bool value='false' id='K'></bool>", "No" },
        { "<bool id='K' value='true' platform='not windows' mode='not scan' feature='not x'/>", "Yes" },
        { "<int id='K' value='+5'/>", "5" },
        { "<int id='K' value=' -2147483648 ' min='-2147483648' max='2147483647'/>", "-2147483648" },
        { "<double id='K' value='-2.5e-3' percentage='true'/>", "-0.002500" },
        { "<double id='K' value='5.'/>", "5.000000" },
        { "<color id='K' red='0' green='255' blue='007'/>", "(  0 255   7 255)" },
        { "<color id='K' alpha='0' blue='1' green='2' red='3'/>", "(  3   2   1   0)" },
        { "<string id='K'/>", "" },
        { "<string id='K' value='a &lt;b&gt; &#10;c'/>", "a <b> \nc" },
        { "<font id='K'/>", "arial" },
        { "<shortcut id='K' value='Ctrl+Shift+S' mode='full'/>", "Ctrl+Shift+S" },
    };
    for (Row &row : rows)
        row.first = "<preferences>" + category(row.first) + "</preferences>";
    for (int number = 0; number <= PR_PrefItem::Panovia; ++number) {
        QByteArray const name = PR_PrefItem::getCategoryString(PR_PrefItem::Category(number)).toUtf8();
        rows.push_back({ "<preferences>" + category("<bool id='K' value='true'/>", name) + "</preferences>", "Yes" });
    }
    expectValues(m_definitions, rows, [this](QByteArray const &content) {
        writeFile(u"install/resources/prefs.xml"_s, content);
        return std::make_unique<TestStore>(QString());
    });
}

TEST_F(SchemaTest, AcceptsWhatTheLoaderOfUserFilesReads)
{
    define({});
    std::vector<Row> rows{
        { "<bool id='K' value='N'/>", "No" },
        { "<int id='e/s/other' value='1'/><int value='-7' id='K'/>", "-7" },
        { "<double id='K' value='-inf'/>", "-inf" },
        { "<color id='K' alpha='255' blue='3' green='2' red='1'/>", "(  1   2   3 255)" },
        { "<string id='K' value='a&#xa;b'/>", "a\nb" },
        { "<string id='K' cdata='true'><![CDATA[a\n<b>]]></string>", "a\n<b>" },
        { "<font id='K' value='Arial'/><enum id='E' value='2'/>", "Arial" },
        { "<shortcut id='K' value='Num+4'/>", "Num+4" },
        { "<curve id='K' value='x' steps='2'><point x='1'>t</point></curve>", "x" },
    };
    for (Row &row : rows)
        row.first = "<preferences>" + row.first + "</preferences>";
    expectValues(m_userFile, rows, [this](QByteArray const &content) {
        writeFile(u"user-pref.xml"_s, content);
        return std::make_unique<TestStore>(path(u"user.pref"_s));
    });
}

TEST_F(SchemaTest, AcceptsWhatASaveWrites)
{
    define(category("<font id='FONT'/><shortcut id='KEY' value='Ctrl+S'/>"));
    writeFile(u"user-pref.xml"_s,
        "<preferences><font id='FONT' value='times'/><shortcut id='KEY' value='Alt'/></preferences>");
    TestStore store(path(u"user.pref"_s));
    takeReports();
    store.setBoolValue(u"BOOL"_s, true);
    store.setIntValue(u"INT"_s, -1);
    store.setDoubleValue(u"DOUBLE"_s, 1e300);
    store.setDoubleValue(u"NO_NUMBER"_s, qQNaN());
    store.setDoubleValue(u"INFINITE"_s, -qInf());
    store.setEnumValue(u"ENUM"_s, 2);
    store.setRgbaValue(u"COLOR"_s, 0x01020304U);
    store.setStringValue(u"EMPTY"_s, QString());
    store.setStringValue(u"LINES"_s, u"a\nb"_s);
    store.setStringValue(u"CARRIAGE_RETURN"_s, u"a\r\nb"_s);
    store.setStringValue(u"a/key/<\""_s, u"]]>"_s);
    store.save();
    EXPECT_EQ(readFile(u"user-pref.xml"_s).count(" id="), 13);
    QString messages;
    EXPECT_TRUE(validate(m_userFile, { path(u"user-pref.xml"_s) }, &messages)[0]) << messages;
}

TEST_F(SchemaTest, EditorsFindHelpForEachElementAndAttribute)
{
    QString const firstWithout = u"string(//*[(name()='element' or name()='attribute') and @name and "
                                 "not(*[name()='a:documentation'])]/@name)"_s;
    for (QString const &schema : { m_definitions, m_userFile }) {
        QProcess xmllint;
        xmllint.start(u"xmllint"_s, { u"--xpath"_s, firstWithout, schema });
        EXPECT_TRUE(xmllint.waitForFinished() && xmllint.exitCode() == 0) << xmllint.errorString();
        EXPECT_EQ(QString::fromUtf8(xmllint.readAllStandardOutput()).trimmed(), QString()) << schema;
    }
}
