#include "ProgramTest.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QStringEncoder>

using namespace Qt::StringLiterals;

namespace {
class CheckTest : public ProgramTest {
protected:
    CheckTest() { commonArguments[1] = m_data + u"installation"_s; }

    // What is found in each file of a folder of tests/data/check stands in a file NAME.expected beside it. All files
    // are checked in one run. With the environment variable PREFS_UPDATE_EXPECTED the expectations are written anew.
    void expectFindings(QString const &folder, QStringList const &options = {}) const
    {
        QStringList files;
        for (QDirIterator xml(m_data + folder, { u"*.xml"_s }, QDir::Files, QDirIterator::Subdirectories);
             xml.hasNext();)
            files.append(xml.next());
        QString const out = QString::fromStdString(run(options + QStringList{ u"check"_s } + files).out).remove(m_data);
        for (QString const &file : std::as_const(files)) {
            QString const begin = file.mid(m_data.size()) + u':';
            QString found;
            for (QString const &line : out.split(u'\n')) {
                if (line.startsWith(begin))
                    found += line.mid(begin.size()) + u'\n';
            }
            QFile expected(file.chopped(4) + u".expected"_s);
            if (qEnvironmentVariableIsSet("PREFS_UPDATE_EXPECTED") && expected.open(QIODevice::WriteOnly)) {
                expected.write(found.toUtf8());
                expected.close();
            }
            EXPECT_TRUE(expected.open(QIODevice::ReadOnly)) << file << expected.errorString();
            EXPECT_EQ(found.toStdString(), expected.readAll().toStdString()) << file;
        }
    }

    static QByteArray definitions(QByteArray const &items)
    {
        return "<preferences>" + category(items) + "</preferences>";
    }

    // What is found in a file, without its name.
    std::string findings(QByteArray const &content) const
    {
        QString const file = writeFile(u"file.xml"_s, content);
        return QString::fromStdString(run({ u"check"_s, file }).out).remove(u"$/file.xml:"_s).toStdString();
    }

    QString const m_data = QStringLiteral(BRIVANT_TEST_DATA "/check/");
};
} // namespace

TEST_F(CheckTest, FindsTheFaultsOfTheDataFiles)
{
    for (QString const &folder : { u"definitions"_s, u"overrides"_s, u"preferenceSets"_s, u"user-files"_s })
        expectFindings(folder);
    expectFindings(u"user-files-of-machine"_s, { u"--local"_s });
}

TEST_F(CheckTest, KnowsPlacesInAnyTextForm)
{
    QByteArray const lines = "<preferences><category id='Sound'>\n\n  <string\n    id='\xC3\xA9'\n    valeu='&amp;'/>\n"
                             "</category></preferences>";
    QStringEncoder utf16(QStringConverter::Utf16, QStringConverter::Flag::WriteBom);
    QByteArray const forms[] = { lines, QByteArray(lines).replace("\n", "\r\n"), QByteArray(lines).replace("\n", "\r"),
        "\xEF\xBB\xBF" + lines, utf16.encode(QString::fromUtf8(lines)) };
    for (QByteArray const &form : forms)
        EXPECT_EQ(findings(form).substr(0, 13), "5:5: warning:") << form.constData();
    QByteArray const entity = "<!DOCTYPE preferences [<!ENTITY e '<string id=\"E\" valeu=\"\"/>'>]>\n"
                              "<preferences><category id='Sound'>&e;</category></preferences>";
    EXPECT_EQ(findings(entity).substr(0, 5), "2:14:");
}

TEST_F(CheckTest, TurnsAwayWhatTheLoaderTurnsAway)
{
    QByteArray const hostile[] = {
        QByteArray("<a>").repeated(300) + QByteArray("</a>").repeated(300),
        definitions(QByteArray("<int/>").repeated(200000)),
    };
    for (QByteArray const &content : hostile)
        EXPECT_NE(findings(content).find(" [not-xml]\n"), std::string::npos);

    // A file of nothing but wrong keys, or of one key alone, is done in its time.
    QByteArray wrong, same;
    for (int i = 0; i < 20000; ++i) {
        wrong += "<int id='WRONG_KEY_" + QByteArray::number(i) + "' value='1'/>\n";
        same += "<int id='INT' value='" + QByteArray::number(i) + "'/>\n";
    }
    Run const result = run({ u"check"_s, writeFile(u"wrong_override.xml"_s, definitions(wrong)),
        writeFile(u"same_override.xml"_s, definitions(same)) });
    EXPECT_NE(result.messages.find("Errors: 39999, warnings: 0."), std::string::npos) << result.messages;
}

TEST_F(CheckTest, WritesJsonAndAnExitStatus)
{
    writeFile(u"good.xml"_s, definitions("<int id='I' value='1'/>"));
    writeFile(u"warned.xml"_s, definitions("<int id='I' value='1' vaule='2'/>"));
    writeFile(u"bad.xml"_s, definitions("\n<int id='I' value='x'/>"));
    writeFile(u"my_override.xml"_s, definitions("<int id='I' value='1'/>"));
    struct {
        char const *arguments;
        int status;
        char const *messages;
    } const rows[] = {
        { "$/good.xml", 0, "" },
        { "$/warned.xml", 0, "" },
        { "--strict|$/warned.xml", 3, "prefs: Errors: 0, warnings: 1.\n" },
        { "--strict|--ignore|unknown-attribute|$/warned.xml", 0, "" },
        { "--ignore|unknown|$/warned.xml", 2, "no rule \"unknown\"" },
        { "$/good.xml|$/bad.xml|$/warned.xml", 3, "prefs: Errors: 1, warnings: 1.\n" },
        { "$/missing.xml", 3, "Errors: 1" },
        { "--install|$/none|$/my_override.xml", 3, "none/resources/prefs.xml: No such file" },
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(row.arguments);
        QString const arguments = "check|"_L1 + QLatin1String(row.arguments);
        Run const result = run(QString(arguments).replace(u'$', path({})).split(u'|'));
        EXPECT_EQ(result.status, row.status);
        EXPECT_NE(result.messages.find(row.messages), std::string::npos) << result.messages;
    }

    std::string const json = run({ u"check"_s, u"--json"_s, path(u"warned.xml"_s) }).out;
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(json)).toJson(QJsonDocument::Compact).toStdString(),
        R"([{"column":59,"file":"$/warned.xml","key":"I","line":1,"rule":"unknown-attribute","severity":"warning",)"
        R"("suggestion":"value","text":"\"int\" has no attribute \"vaule\""}])");
}

TEST_F(CheckTest, ShippedFilesAreGood)
{
    QString const resources = QStringLiteral(BRIVANT_RESOURCES "/");
    for (auto const &[flavour, prefix] : { std::pair(u"norvelle"_s, QString()), std::pair(u"panovia"_s, u"pv_"_s) }) {
        // Which fonts there are is a matter of the machine.
        Run const result = run({ u"check"_s, u"--install"_s, resources + u".."_s, u"--flavour"_s, flavour,
            u"--strict"_s, u"--ignore"_s, u"missing-font"_s, resources + prefix + u"prefs.xml"_s,
            resources + prefix + u"localPrefs.xml"_s, resources + u"examples/"_s + prefix + u"prefs_override.xml"_s,
            resources + u"preferenceSets/"_s + flavour + u"/classroom.xml"_s });
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.status, 0) << result.messages;
    }
}
