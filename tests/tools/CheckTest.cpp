#include "ProgramTest.h"

#include <QDir>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {
class CheckTest : public ProgramTest {
protected:
    static QByteArray definitions(QByteArray const &items)
    {
        return "<preferences>" + category(items) + "</preferences>";
    }
};

// Files with a kind of fault each, a folder for each kind of file, checked against the installation beside them. What a
// run finds is in the file "expected" of the folder; BRIVANT_UPDATE_EXPECTED=1 writes it anew.
class CheckedFolder : public CheckTest, public testing::WithParamInterface<char const *> { };
INSTANTIATE_TEST_SUITE_P(Kinds, CheckedFolder, testing::Values("definitions", "overrides", "preferenceSets", "users"));
} // namespace

TEST_P(CheckedFolder, HasTheExpectedFindings)
{
    QString const data = QStringLiteral(BRIVANT_TEST_DATA "/check/");
    QDir const folder(data + QLatin1String(GetParam()));
    QStringList arguments{ u"--install"_s, data + u"install"_s, u"check"_s };
    for (QString const &name : folder.entryList({ u"*.xml"_s }, QDir::Files, QDir::Name))
        arguments.append(folder.filePath(name));
    QByteArray found = QByteArray::fromStdString(run(arguments).out);
    found.replace((folder.path() + u'/').toUtf8(), "").replace(data.toUtf8(), "");

    QFile expected(folder.filePath(u"expected"_s));
    if (qEnvironmentVariableIsSet("BRIVANT_UPDATE_EXPECTED")) {
        ASSERT_TRUE(expected.open(QIODevice::WriteOnly) && expected.write(found) == found.size());
        expected.close();
    }
    ASSERT_TRUE(expected.open(QIODevice::ReadOnly));
    EXPECT_EQ(found.toStdString(), expected.readAll().toStdString());
}

TEST_F(CheckTest, EndsInTimeOnLargeFiles)
{
    QByteArray wrong, same;
    for (int i = 0; i < 20000; ++i) {
        wrong += "<int id='WRONG_KEY_" + QByteArray::number(i) + "' value='1'/>\n";
        same += "<int id='INT' value='" + QByteArray::number(i) + "'/>\n";
    }
    QString const tooMany = writeFile(u"many.xml"_s, definitions(QByteArray("<int/>").repeated(200000)));
    writeFile(u"wrong_override.xml"_s, definitions(wrong));
    writeFile(u"same_override.xml"_s, definitions(same));
    Run const result = run({ u"check"_s, path(u"wrong_override.xml"_s), path(u"same_override.xml"_s), tooMany });
    EXPECT_NE(result.messages.find("Errors: 40000, warnings: 0."), std::string::npos) << result.messages;
    EXPECT_NE(result.out.find("/many.xml:0:0: error: too many elements [not-xml]\n"), std::string::npos);
}

TEST_F(CheckTest, WritesJsonAndAnExitStatus)
{
    define(category("<int id='MACHINE' value='1'/>"), u"localPrefs.xml"_s);
    QString const good = writeFile(u"good.xml"_s, definitions("<int id='I' value='1'/>"));
    QString const warned = writeFile(u"warned.xml"_s, definitions("<int id='I' value='1' vaule='2'/>"));
    QString const bad = writeFile(u"bad.xml"_s, definitions("\n<int id='I' value='x'/>"));
    struct Case {
        QStringList arguments;
        int status;
        char const *messages;
    };
    Case const cases[] = {
        { { good }, 0, "" },
        { { warned }, 0, "" },
        { { u"--strict"_s, warned }, 3, "prefs: Errors: 0, warnings: 1.\n" },
        { { u"--strict"_s, u"--ignore"_s, u"unknown-attribute"_s, warned }, 0, "" },
        { { u"--ignore"_s, u"unknown"_s, warned }, 2, "no rule \"unknown\"" },
        { { good, bad, warned }, 3, "prefs: Errors: 1, warnings: 1.\n" },
        { { path(u"missing.xml"_s) }, 3, "Errors: 1" },
        { {}, 2, "check takes FILE..." },
        { { u"--rules"_s }, 0, "" },
        { { u"--install"_s, path(u"none"_s), writeFile(u"an_override.xml"_s, definitions("")) }, 0, "" },
        { { u"--install"_s, path(u"none"_s), writeFile(u"my_override.xml"_s, definitions("<int id='I' value='1'/>")) },
            3, "none/resources/prefs.xml: No such file" },
        { { u"--local"_s, writeFile(u"local.xml"_s, "<preferences><int id='MACHINE' value='1'/></preferences>"),
              u"--strict"_s },
            0, "" },
    };
    for (Case const &each : cases) {
        SCOPED_TRACE(each.arguments.join(u' ').toStdString());
        Run const result = run(QStringList{ u"check"_s } + each.arguments);
        EXPECT_EQ(result.status, each.status);
        EXPECT_NE(result.messages.find(each.messages), std::string::npos) << result.messages;
    }
    EXPECT_EQ(run({ u"check"_s, path(u"missing.xml"_s) }).out,
        "$/missing.xml:0:0: error: No such file or directory [cannot-read]\n");

    auto const json = [this](QStringList const &files) {
        std::string const out = run(QStringList{ u"check"_s, u"--json"_s } + files).out;
        return QJsonDocument::fromJson(QByteArray::fromStdString(out)).toJson(QJsonDocument::Compact).toStdString();
    };
    EXPECT_EQ(json({ good }), "[]");
    EXPECT_EQ(json({ bad, warned }),
        R"([{"column":13,"file":"$/bad.xml","key":"I","line":2,"rule":"bad-value","severity":"error","suggestion":"",)"
        R"("text":"\"x\" is no whole number of 32 bits and counts as 0"},)"
        R"({"column":59,"file":"$/warned.xml","key":"I","line":1,"rule":"unknown-attribute","severity":"warning",)"
        R"("suggestion":"value","text":"\"int\" has no attribute \"vaule\""}])");
}

TEST_F(CheckTest, ShippedFilesAreGood)
{
    QString const resources = QStringLiteral(BRIVANT_RESOURCES);
    std::pair<QString, QStringList> const flavours[] = {
        { u"norvelle"_s,
            { u"prefs.xml"_s, u"localPrefs.xml"_s, u"examples/prefs_override.xml"_s,
                u"preferenceSets/norvelle/classroom.xml"_s } },
        { u"panovia"_s,
            { u"pv_prefs.xml"_s, u"pv_localPrefs.xml"_s, u"examples/pv_prefs_override.xml"_s,
                u"preferenceSets/panovia/classroom.xml"_s } },
    };
    for (auto const &[flavour, names] : flavours) {
        // Which fonts there are is a matter of the machine.
        QStringList arguments{ u"check"_s, u"--install"_s, resources + u"/.."_s, u"--flavour"_s, flavour, u"--strict"_s,
            u"--ignore"_s, u"missing-font"_s };
        for (QString const &name : names)
            arguments += resources + u'/' + name;
        Run const result = run(arguments);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.status, 0) << result.messages;
    }
}
