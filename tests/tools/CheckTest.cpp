#include "ProgramTest.h"

#include <QJsonDocument>
#include <QStringEncoder>

#include <sstream>

using namespace Qt::StringLiterals;

namespace {
class CheckTest : public ProgramTest {
protected:
    struct Row {
        QByteArray content;
        char const *findings; // without the file's name
    };

    // All files in one run; each gives its own findings and no others. "#" in a file's name stands for a number.
    void expectFindings(QString const &fileName, std::vector<Row> const &rows)
    {
        QStringList arguments{ u"check"_s };
        std::string expected;
        for (size_t i = 0; i < rows.size(); ++i) {
            QString const name = QString(fileName).replace(u'#', QString::number(i));
            arguments += writeFile(name, rows[i].content);
            std::istringstream findings(rows[i].findings);
            for (std::string line; std::getline(findings, line);)
                expected += "$/" + name.toStdString() + ":" + line + "\n";
        }
        EXPECT_EQ(run(arguments).out, expected);
    }

    static QByteArray definitions(QByteArray const &items)
    {
        return "<preferences>" + category(items) + "</preferences>";
    }
    static QByteArray userItems(QByteArray const &items) { return "<preferences>\n" + items + "</preferences>"; }

    // An installation with one preference of each type, and a locked one.
    void install() const
    {
        define(category("<bool id='BOOL' value='true'/>\n<int id='INT' value='3' min='-9' max='9'/>\n"
                        "<double id='DOUBLE' value='0.5'/>\n<color id='COLOR' red='1' green='2' blue='3'/>\n"
                        "<string id='STRING' value='text'/>\n<shortcut id='SHORTCUT' value='Ctrl+S'/>\n"
                        "<font id='FONT' value=''/>\n<int id='LOCKED' value='1' facilityOverride='true'/>\n"
                        "<int id='ELSEWHERE' value='1' platform='beos'/>\n<string id='PREFERENCE_SET' value=''/>"));
        define(category("<int id='MACHINE' value='1'/>"), u"localPrefs.xml"_s);
        define(category("<int id='INT' value='4' min='-9' max='9'/>\n<int id='DOUBLE' value='4' mode='paint'/>"),
            u"prefs_override.xml"_s);
        define({}, u"preferenceSets/norvelle/classroom.xml"_s);
    }
};
} // namespace

TEST_F(CheckTest, FindsWhatIsWrongInDefinitions)
{
    auto const one = [](QByteArray const &item) -> QByteArray {
        return "<preferences>\n" + category(item) + "</preferences>";
    };
    expectFindings(u"#.xml"_s,
        {
            { one("<bool id='B' value='true'/><int id='I' value='0' min='0' max='0'/><double id='D' value='1e3' "
                  "percentage='true'/><color id='C' red='0' green='255' blue='1' alpha='0'/><string id='S' value=''/>"
                  "<font id='F' value=''/><shortcut id='K' value='Ctrl+,' facilityOverride='TRUE'/><!-- note -->"),
                "" },
            { "<preferences>\n <category>\n</preferences>", "3:15: error: Opening and ending tag mismatch. [not-xml]" },
            { "<preferences>\n <catagory><int/></catagory></preferences>",
                "2:2: error: \"catagory\" stands outside of a category and is not read; did you mean \"category\"? "
                "[unknown-element]" },
            { one("<enum id='E' value='a'/><colour id='C'/>"),
                "2:24: error: there is no type \"enum\" [unknown-element]\n"
                "2:48: error: there is no type \"colour\"; did you mean \"color\"? [unknown-element]" },
            { one("<string value='x'/><string id='' value='x'/>"),
                "2:24: error: the element has no id [missing-id]\n2:43: error: the element has no id [missing-id]" },
            { one("<string id='S' valeu='x' longdesc='x'/>"),
                "2:39: warning: \"string\" has no attribute \"valeu\"; did you mean \"value\"? [unknown-attribute]\n"
                "2:49: warning: \"string\" has no attribute \"longdesc\"; did you mean \"longDesc\"? "
                "[unknown-attribute]" },
            { one("<string ID='S' value='x'/>"),
                "2:24: error: the element has no id [missing-id]\n"
                "2:32: warning: \"string\" has no attribute \"ID\"; did you mean \"id\"? [unknown-attribute]" },
            { "<preferenses>\n x\n" + category("y<string id='S'/>") + "</preferenses>",
                "1:1: warning: the root is \"preferenses\", not \"preferences\"; did you mean \"preferences\"? "
                "[unknown-root]\n"
                "1:1: warning: the text in \"preferenses\" is not read [ignored-content]\n"
                "3:1: warning: the text in \"category\" is not read [ignored-content]" },
            { one("<double id='D' value='1' min='0'/>"),
                "2:49: warning: \"double\" has no attribute \"min\" [unknown-attribute]" },
            { "<preferences mode='paint'><category id='Sound' feature='a' label='x'/></preferences>",
                "1:14: warning: \"preferences\" has no attribute \"mode\" [unknown-attribute]\n"
                "1:60: warning: \"category\" has no attribute \"label\" [unknown-attribute]" },
            { one("<string id='S'>text</string><string id='T'><![CDATA[x]]></string><string id='U'><int/></string>"
                  "<string id='V'> <!-- x --> </string>"),
                "2:24: warning: what stands inside of the element is not read [ignored-content]\n"
                "2:52: warning: what stands inside of the element is not read [ignored-content]\n"
                "2:89: warning: what stands inside of the element is not read [ignored-content]" },
            { "<preferences><category id='Node view'/><category/><category id='Panovia'/></preferences>",
                "1:24: error: there is no category \"Node view\"; did you mean \"Node View\"? [unknown-category]\n"
                "1:40: error: there is no category \"\" [unknown-category]" },
            { one("<bool id='B'/><int id='I' min='1'/><color id='C' red='1' blue='1'/>"),
                "2:24: warning: \"value\" is missing [missing-value]\n"
                "2:38: warning: \"value\" is missing [missing-value]\n"
                "2:38: error: 0 is outside 1 to 2147483647 [outside-range]\n"
                "2:59: warning: \"green\" is missing [missing-value]" },
            { one("<bool id='B' value='True'/><bool id='C' value='Y'/><int id='I' value='2.5' max='x'/>"
                  "<int id='J' value='2147483648'/><double id='D' value='1,5'/><double id='E' value='inf'/>"),
                "2:37: error: \"True\" is neither true nor false and counts as false; did you mean \"true\"? "
                "[bad-value]\n"
                "2:64: error: \"Y\" is neither true nor false and counts as false [bad-value]\n"
                "2:87: error: \"2.5\" is no whole number of 32 bits and counts as 0 [bad-value]\n"
                "2:99: error: \"x\" is no whole number of 32 bits and counts as 0 [bad-value]\n"
                "2:120: error: \"2147483648\" is no whole number of 32 bits and counts as 0 [bad-value]\n"
                "2:155: error: \"1,5\" is no finite number [bad-value]\n"
                "2:183: error: \"inf\" is no finite number [bad-value]" },
            { one("<string id='S' facilityOverride='yes'/><double id='D' value='1' percentage='TRUE'/>"),
                "2:39: error: \"yes\" is neither true nor false and counts as false [bad-flag]\n"
                "2:88: error: \"TRUE\" is neither true nor false and counts as false; did you mean \"true\"? "
                "[bad-flag]" },
            { one("<int id='I' value='1' min='2' max='1'/>"),
                "2:46: error: the minimum 2 is above the maximum 1 [reversed-range]" },
            { one("<int id='I' value='-1' min='0' max='1'/><int id='J' value='2' max='1'/>"),
                "2:36: error: -1 is outside 0 to 1 [outside-range]\n"
                "2:76: error: 2 is outside -2147483648 to 1 [outside-range]" },
            { one("<color id='C' red='256' green='-1' blue='x' alpha='255'/>"),
                "2:38: error: 256 is outside 0 to 255 [outside-channel]\n"
                "2:48: error: -1 is outside 0 to 255 [outside-channel]\n"
                "2:59: error: \"x\" is no whole number and counts as 0 [bad-value]" },
            { one("<shortcut id='K' value='Ctrl+Nokey'/><shortcut id='L' value='Ctrl+X, Ctrl+C'/>"
                  "<shortcut id='M' value=','/>"),
                "2:41: error: \"Ctrl+Nokey\" is no key [unreadable-shortcut]\n"
                "2:78: error: only the first key of \"Ctrl+X, Ctrl+C\" counts [unreadable-shortcut]" },
            { one("<font id='F' value='No Such Font 7'/>"),
                "2:37: warning: there is no font \"No Such Font 7\" [missing-font]" },
            { one("<string id='A' platform='window'/><string id='B' platform='not linux'/><string id='C' mode='Full' "
                  "/><string id='D' mode='scan'/><string id='E' mode='not '/><string id='F' platform='not beos'/>"),
                "2:39: error: \"window\" is no condition on the platform; did you mean \"windows\"? [bad-platform]\n"
                "2:110: error: \"Full\" is no condition on the mode; did you mean \"full\"? [bad-mode]\n"
                "2:167: error: \"not \" is no condition on the mode [bad-mode]\n"
                "2:195: error: \"not beos\" is no condition on the platform [bad-platform]" },
            { one("<string id='A' feature=''/><string id='B' feature='Not rig'/><string id='C' feature='not'/>"
                  "<string id='D' feature='not rig'/><string id='E' feature='a b'/>"),
                "2:39: error: \"\" is no condition on a feature [bad-feature]\n"
                "2:66: error: \"Not rig\" is no condition on a feature; did you mean \"not rig\"? [bad-feature]\n"
                "2:100: error: \"not\" is no condition on a feature [bad-feature]\n"
                "2:164: error: \"a b\" is no condition on a feature [bad-feature]" },
            { "<preferences><category id='Sound' platform='windows' feature='rig'>\n"
              "<string id='A' platform='not windows'/>\n<string id='B' platform='not linux'/>\n"
              "<string id='C' feature='not rig'/>\n</category></preferences>",
                "2:1: error: the conditions, with those of the category, contradict each other [never-holds]\n"
                "4:1: error: the conditions, with those of the category, contradict each other [never-holds]" },
            { one("<int id='XSHEET_LINE_HOLD' value='3' mode='full'/><int id='SOME_OTHER' value='3' mode='full'/>"),
                "2:24: error: the application caches XSHEET_LINE_HOLD, which must have no condition "
                "[conditional-cached-key]" },
        });
}

TEST_F(CheckTest, FindsDefinitionsThatNeverCount)
{
    auto const two = [](QByteArray const &first, QByteArray const &second) -> QByteArray {
        return definitions("\n<string id='K' " + first + "/>\n<string id='K' " + second + "/>");
    };
    char const *const duplicate = "3:9: error: the key is defined before, at line 2 [duplicate-key]";
    char const *const shadowed = "2:9: warning: line 3 holds wherever this does and replaces it [shadowed-key]";
    char const *const dropped = "3:9: error: line 2 locks the key [dropped-by-lock]";
    expectFindings(u"#.xml"_s,
        {
            { two("", ""), duplicate },
            { two("platform='linux'", "platform='linux'"), duplicate },
            { two("", "facilityOverride='true'"), duplicate },
            { two("platform='linux'", ""), shadowed },
            { two("platform='linux' mode='scan' feature='rig'", "feature='rig' mode='not full'"), shadowed },
            { two("", "platform='linux'"), "" },
            { two("platform='linux'", "platform='not linux'"), "" },
            { two("feature='rig'", "feature='not rig'"), "" },
            { two("feature='rig'", "feature='light'"), "" },
            { two("mode='scan'", "platform='linux'"), "" },
            { two("facilityOverride='true'", ""), dropped },
            { two("facilityOverride='true' mode='not full'", "mode='scan'"), dropped },
            { two("facilityOverride='true' mode='scan'", ""), "" },
            { two("", "facilityOverride='true' mode='scan'"), "" },
        });
}

TEST_F(CheckTest, ChecksOverridesAndSetsAgainstTheInstallation)
{
    install();
    expectFindings(u"#_override.xml"_s,
        {
            { definitions("<int id='INT' value='4' min='-9' max='9'/><int id='MACHINE' value='2'/><int id='ELSEWHERE' "
                          "value='2'/><bool id='BOOL' value='true' facilityOverride='true'/>"),
                "" },
            { definitions("<int id='ITN' value='4'/><int id='NOTHING_LIKE_IT' value='4'/>"),
                "1:42: error: the installation defines no ITN; did you mean \"INT\"? [unknown-key]\n"
                "1:67: error: the installation defines no NOTHING_LIKE_IT [unknown-key]" },
            { definitions("<double id='INT' value='4'/><string id='BOOL' value='yes'/>"),
                "1:37: error: the type is double, that of $/install/resources/prefs.xml:2 is int; did you mean "
                "\"int\"? [changed-type]\n"
                "1:65: error: the type is string, that of $/install/resources/prefs.xml:1 is bool; did you mean "
                "\"bool\"? [changed-type]" },
            { definitions("<bool id='BOOL' value='true'/><int id='INT' value='3' min='-9' max='10'/>"
                          "<double id='DOUBLE' value='0.50' percentage='true'/>"),
                "1:37: warning: the default is that of $/install/resources/prefs.xml:1 already [repeated-default]" },
            { "<preferences>" + category("<int id='INT' value='7'/>", "Sound") + "</preferences>",
                "1:35: warning: the category is \"Sound\", that of $/install/resources/prefs.xml:2 is \"General\" "
                "[changed-category]" },
            { definitions("<int id='LOCKED' value='2'/>"),
                "1:42: error: $/install/resources/prefs.xml:8 locks the key [dropped-by-lock]" },
        });
    expectFindings(u"preferenceSets/norvelle/#.xml"_s,
        {
            { "<preferences feature='rig'>" + category("<int id='INT' value='5'/>") + "</preferences>",
                "1:14: warning: \"preferences\" has no attribute \"feature\" [unknown-attribute]\n"
                "1:56: warning: $/install/resources/prefs_override.xml:1 holds wherever this does and replaces it "
                "[shadowed-key]" },
            { definitions("<double id='DOUBLE' value='5'/>"), "" },
        });
}

TEST_F(CheckTest, ChecksUserFiles)
{
    install();
    expectFindings(u"user#.xml"_s,
        {
            { userItems("<bool id='BOOL' value='N'/><int id='INT' value='-9'/><double id='DOUBLE' value='1e-3'/>"
                        "<color id='COLOR' red='0' green='0' blue='0' alpha='0'/><string id='STRING' cdata='true'>"
                        "<![CDATA[a\nb]]></string><shortcut id='SHORTCUT' value=''/><int id='ELSEWHERE' value='x'/>"
                        "<string id='PREFERENCE_SET' value='classroom'/>"),
                "" },
            { "<preferences>\n<int></preferences>", "2:20: error: Opening and ending tag mismatch. [not-xml]" },
            { "<preference>\n<int id='INT' value='1'/>x</preference>",
                "1:1: warning: the root is \"preference\", not \"preferences\"; did you mean \"preferences\"? "
                "[unknown-root]\n1:1: warning: the text in \"preference\" is not read [ignored-content]" },
            { userItems("<int value='1'/>"), "2:1: error: the element has no id [missing-id]" },
            { userItems("<int id='BOL' value='1'/><int id='MACHINE' value='1'/>"),
                "2:6: warning: the installation defines no BOL; did you mean \"BOOL\"? [unknown-key]\n"
                "2:31: warning: the installation defines no MACHINE; did you mean \"MACHINE\"? [unknown-key]" },
            { userItems("<bool id='BOOL' value='Yes'/><int id='INT' value='x'/><double id='DOUBLE' value=''/>"
                        "<color id='COLOR' red='300' green='0' blue='0'/><shortcut id='SHORTCUT' value='Nokey'/>"),
                "2:17: error: \"Yes\" is neither Y nor N and counts as N [bad-value]\n"
                "2:44: error: \"x\" is no value of the type int [bad-value]\n"
                "2:75: error: \"\" is no value of the type double [bad-value]\n"
                "2:85: warning: \"alpha\" is missing and counts as 0 [missing-value]\n"
                "2:103: error: 300 is outside 0 to 255 [outside-channel]\n"
                "2:157: error: \"Nokey\" is no key [unreadable-shortcut]" },
            { userItems(
                  "<int id='INT' value='10'/><font id='FONT' value='No Such Font 7'/><int id='LOCKED' value='2'/>"),
                "2:15: warning: 10 is outside -9 to 9 [outside-range]\n"
                "2:43: warning: there is no font \"No Such Font 7\" [missing-font]\n"
                "2:72: warning: $/install/resources/prefs.xml:8 locks the key [dropped-by-lock]" },
            { userItems("<int id='INT' value='1'/>\n<int id='INT' value='2'/>\n<int\n id='INT' value='2' min='1'/>"),
                "3:6: warning: the value of line 2 is not used [duplicate-key]\n"
                "5:2: warning: the value of line 3 is not used [duplicate-key]\n"
                "5:21: warning: \"int\" has no attribute \"min\" [unknown-attribute]" },
            { userItems("<string id='STRING' value=''>text</string>"),
                "2:1: warning: what stands inside of the element is not read [ignored-content]" },
            { userItems("<string id='PREFERENCE_SET' value='clasroom'/>"),
                "2:29: error: the preference set $/install/resources/preferenceSets/norvelle/clasroom.xml cannot be "
                "read: No such file or directory; did you mean \"classroom\"? [missing-set]" },
        });
}

TEST_F(CheckTest, KnowsPlacesInAnyTextForm)
{
    QByteArray const lines = "<preferences><category id='Sound'>\n\n  <string\n    id='\xC3\xA9'\n    valeu='&amp;'/>\n"
                             "</category></preferences>";
    char const *const finding = "5:5: warning: \"string\" has no attribute \"valeu\"; did you mean \"value\"? "
                                "[unknown-attribute]";
    QStringEncoder utf16(QStringConverter::Utf16, QStringConverter::Flag::WriteBom);
    expectFindings(u"#.xml"_s,
        { { lines, finding }, { QByteArray(lines).replace("\n", "\r\n"), finding },
            { QByteArray(lines).replace("\n", "\r"), finding }, { "\xEF\xBB\xBF" + lines, finding },
            { utf16.encode(QString::fromUtf8(lines)), finding },
            { "<!DOCTYPE preferences [<!ENTITY e '<string id=\"E\" valeu=\"\"/>'>]>\n<preferences><category "
              "id='Sound'>&e;"
              "</category></preferences>",
                "2:14: warning: \"string\" has no attribute \"valeu\"; did you mean \"value\"? "
                "[unknown-attribute]" } });
}

TEST_F(CheckTest, TurnsAwayWhatTheLoaderTurnsAway)
{
    char const *const refused =
        "0:0: error: nested too deeply, too many attributes, or too large for its entities [not-xml]";
    QByteArray many;
    for (int i = 0; i < 300; ++i)
        many += " a" + QByteArray::number(i) + "='1'";
    expectFindings(u"#.xml"_s,
        { { QByteArray("<a>").repeated(300) + QByteArray("</a>").repeated(300), refused },
            { definitions("<int" + many + "/>"), refused },
            { "<preferences>" + category(QByteArray("<int/>").repeated(200000)) + "</preferences>",
                "0:0: error: too many elements [not-xml]" },
            { "", "1:1: error: Premature end of document. [not-xml]" } });

    // A file of nothing but wrong keys, or of one key alone, is done in its time.
    install();
    QByteArray wrong, same;
    for (int i = 0; i < 20000; ++i) {
        wrong += "<int id='WRONG_KEY_" + QByteArray::number(i) + "' value='1'/>\n";
        same += "<int id='INT' value='" + QByteArray::number(i) + "'/>\n";
    }
    writeFile(u"wrong_override.xml"_s, definitions(wrong));
    writeFile(u"same_override.xml"_s, definitions(same));
    Run const result = run({ u"check"_s, path(u"wrong_override.xml"_s), path(u"same_override.xml"_s) });
    EXPECT_NE(result.messages.find("Errors: 39999, warnings: 0."), std::string::npos) << result.messages;
}

TEST_F(CheckTest, WritesJsonAndAnExitStatus)
{
    install();
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
        { { u"--local"_s, writeFile(u"local.xml"_s, userItems("<int id='MACHINE' value='1'/>")), u"--strict"_s }, 0,
            "" },
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
