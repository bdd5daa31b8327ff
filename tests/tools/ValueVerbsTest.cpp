#include "ProgramTest.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {
class ValueVerbsTest : public ProgramTest {
protected:
    // All types, with what is hard to write down: a user that has no definition for one of the keys.
    void userOfEachType() const
    {
        userFile("<bool id='BOOL' value='N'/><int id='INT' value='-9'/><double id='DOUBLE' value='1e-09'/>"
                 "<color id='COLOR' red='0' green='128' blue='255' alpha='7'/>"
                 "<string id='STRING' cdata='true'><![CDATA[a\tb\n\"\\ \xC3\xA9]]></string>"
                 "<shortcut id='KEY' value='Shift'/><font id='FONT' value='my font'/>"
                 "<int id='UNKNOWN' value='7'/><int id='LOCKED' value='5'/>");
    }

    // What a dump of that user's changes gives.
    static QByteArray dumpOfEachType(QByteArray const &last = {})
    {
        return "{\n    \"BOOL\": false,\n    \"COLOR\": \"#070080ff\",\n    \"DOUBLE\": 1e-09,\n    \"FONT\": \"my "
               "font\",\n"
               "    \"INT\": -9,\n    \"KEY\": \"Shift\",\n    \"STRING\": \"a\\tb\\n\\\"\\\\ \xC3\xA9\""
            + last + "\n}\n";
    }
};
} // namespace

TEST_F(ValueVerbsTest, LoadTakesBackWhatDumpGives)
{
    userOfEachType();
    QByteArray const everything = QByteArray::fromStdString(run({ u"dump"_s }).out);
    EXPECT_TRUE(everything.contains("\"LOCKED\": 1,\n"));
    QByteArray const ofUser = readFile(u"user-pref.xml"_s);
    expect({
        { "dump|--changed", 0, dumpOfEachType() },
        { "dump|--category|Internal", 0, "{\n    \"UNKNOWN\": 7\n}\n" },
        { "dump|--category|None", 2, "", "no category" },
        { "load|-", 0, "", "", everything },
    });
    EXPECT_EQ(readFile(u"user-pref.xml"_s), ofUser);
    EXPECT_FALSE(QFile::exists(path(u"user-pref.xml~"_s))) << "values that are there already were saved";

    writeFile(u"values.json"_s, dumpOfEachType(",\n    \"LOCKED\": 1"));
    QByteArray const others =
        "<preferences><int id='UNKNOWN' value='8'/><font id='FONT' value='my font'/></preferences>";
    writeFile(u"other-pref.xml"_s, others);
    expect({ { "--user|$/other.pref|load|$/values.json", 0, "" } });
    EXPECT_EQ(readFile(u"other-pref.xml~"_s), others) << "saved more than once";
    expect({
        { "--user|$/other.pref|load|-", 0, "", "", "{\"UNKNOWN\": 7}" },
        { "--user|$/other.pref|dump|--changed", 0, dumpOfEachType() },
        { "--user|$/other.pref|get|UNKNOWN", 0, "7\n" },
        { "--user|$/other.pref|load|-", 0, "", "", "{}" },
    });
}

TEST_F(ValueVerbsTest, NullStandsForWhatHasNoForm)
{
    userFile("<double id='DOUBLE' value='inf'/>");
    expect({
        { "dump|--changed", 0, "{\n    \"DOUBLE\": null\n}\n" },
        { "load|-", 0, "", "", "{\"DOUBLE\": null}" },
        { "load|-", 6, "", "INT: null is no value", "{\"INT\": null}" },
        { "load|-", 0, "", "", "{\"DOUBLE\": 1}" },
        { "get|DOUBLE", 0, "1.000000\n" },
    });
}

TEST_F(ValueVerbsTest, LoadSetsAllOrNothing)
{
    struct Refusal {
        char const *value; // beside a good one
        int status;
        char const *message;
    };
    Refusal const refusals[] = {
        { "'NO_SUCH': 1", 1, "NO_SUCH: there is no such preference" },
        { "'\\u001b[2J\\n': 1", 1, "prefs: \\x1b[2J\\n: there is no" },
        { "'LOCKED': 2", 5, "LOCKED: locked by the facility" },
        { "'INT': 10", 6, "INT: 10 is no value; expected a whole number from -9 to 9, as a JSON number" },
        { "'INT': 2.5", 6, "INT: 2.5" },
        { "'INT': '3'", 6, "INT: \"3\"" },
        { "'BOOL': 'yes'", 6, "expected yes or no, as true or false" },
        { "'DOUBLE': true", 6, "DOUBLE: true" },
        { "'COLOR': '#12345'", 6, "COLOR: \"#12345\"" },
        { "'KEY': 'Ctrl+Nokey'", 6, "KEY: \"Ctrl+Nokey\"" },
        { "'FONT': 'no such font'", 6, "FONT: \"no such font\"" },
        { "'STRING': 5", 6, "as a JSON string" },
        { "'INT': 99, 'LOCKED': 2", 5, "INT: 99" },
        { "'INT': 99, 'LOCKED': 2, 'NO_SUCH': 1", 1, "INT: 99" },
        { "'STRING': 'a', 'STRING': 'a'", 3, "given more than once: STRING" },
        { "'STRING': 'a', 'STRI\\u004eG': '\\':'", 3, "given more than once: STRING" },
    };
    for (Refusal const &refusal : refusals) {
        QByteArray const value = refusal.value;
        QByteArray const json = (value.startsWith("'BOOL'") ? "{" : "{'BOOL' : false, ") + value + '}';
        expect({ { "load|-", refusal.status, "", refusal.message, QByteArray(json).replace('\'', '"') } });
    }
    EXPECT_FALSE(QFile::exists(path(u"user-pref.xml"_s)));

    QByteArray const values = "{\"INT\": 4.0, \"STRING\": \"\\\"x\\\":1\", \"COLOR\": \"1 2 3\", \"LOCKED\": 1}";
    expect({
        { "load|-|--dry-run", 0, "INT\t3\t4\nSTRING\ttext\t\"x\":1\n", "", values },
        { "get|INT", 0, "3\n" },
        { "--user|$/file/user.pref|load|-", 4, "", "not saved", values },
        { "load|-", 0, "", "", values },
        { "list|--changed", 0, "INT\tint\t4\nSTRING\tstring\t\"x\":1\n" },
    });
}

TEST_F(ValueVerbsTest, LoadRefusesFilesThatHoldNoValues)
{
    writeFile(u"deep.json"_s, QByteArray(100000, '['));
    writeFile(u"large.json"_s, "{" + QByteArray(17 << 20, ' ') + "}");
    expect({
        { "load|$/missing.json", 3, "", "missing.json cannot be read" },
        { "load|$/install", 3, "", "cannot be read" },
        { "load|/dev/zero", 3, "", "more than 16777216 bytes" },
        { "load|$/large.json", 3, "", "more than 16777216 bytes" },
        { "load|$/deep.json", 3, "", "holds no values" },
        { "load|-", 3, "", "at byte", "{\"INT\": 3" },
        { "load|-", 3, "", "object is expected", "[3]" },
        { "load|-", 3, "", "at byte", "" },
    });
    QByteArray const closed = output(u"sh"_s,
        QStringList{ u"-c"_s, u"\"$@\" load - <&- 2>&1; \"$@\" list 2>&1 >&-; echo $?"_s, u"sh"_s,
            QStringLiteral(PREFS_PROGRAM) }
            + commonArguments);
    EXPECT_TRUE(closed.startsWith("prefs: - holds no values: illegal value at byte 0.\n")) << closed.toStdString();
    EXPECT_TRUE(closed.endsWith("\n4\n")) << closed.toStdString();
}

TEST_F(ValueVerbsTest, ShowsWhatTheUserChanged)
{
    userFile("<int id='INT' value='3'/><bool id='BOOL' value='N'/><double id='DOUBLE' value='0.5'/>"
             "<string id='STRING' cdata='true'><![CDATA[a\tb\n]]></string><int id='UNKNOWN' value='7'/>"
             "<int id='LOCKED' value='5'/>");
    expect({
        { "diff", 0, "BOOL\tYes\tNo\nSTRING\ttext\ta\\tb\\n\nUNKNOWN\t\t7\n" },
        { "diff|--json", 0,
            "{\n    \"BOOL\": {\n        \"default\": true,\n        \"value\": false\n    },\n"
            "    \"STRING\": {\n        \"default\": \"text\",\n        \"value\": \"a\\tb\\n\"\n    },\n"
            "    \"UNKNOWN\": {\n        \"value\": 7\n    }\n}\n" },
    });

    expect({
        { "--user|$/third.pref|load|-", 0, "", "", QByteArray::fromStdString(run({ u"dump"_s }).out) },
        { "--user|$/third.pref|diff", 0, "BOOL\tYes\tNo\nSTRING\ttext\ta\\tb\\n\n" },
    });

    // Numbers that look the same with the digits that are shown.
    userFile("<double id='DOUBLE' value='0.5000001'/>");
    expect({ { "diff", 0, "DOUBLE\t0.5\t0.5000001\n" } });
}

TEST_F(ValueVerbsTest, ComparesWithAnotherUser)
{
    QByteArray const items = "<int id='INT' value='4'/><string id='OURS' value='a&#9;b'/>";
    userFile(items);
    QByteArray const differences = "BOOL\tNo\tYes\nOURS\t\ta\\tb\nTHEIRS\t7\t\n";
    QByteArray const xml = "<preferences><int id='INT' value='4'/><bool id='BOOL' value='N'/>"
                           "<string id='THEIRS' value='7'/><int id='LOCKED' value='5'/></preferences>";
    writeFile(u"their-pref.xml"_s, xml);
    writeFile(u"their.pref.xml~"_s, "\xEF\xBB\xBF" + xml);
    writeFile(u"their.pref"_s, "INT 4\nBOOL N\nTHEIRS 7\nLOCKED 5\n");
    writeFile(u"damaged.xml"_s, "<prefer");
    writeFile(u"damaged.xml~"_s, xml);
    expect({
        { "diff|--against|$/their-pref.xml", 0, differences },
        { "diff|--against|$/their.pref.xml~", 0, differences },
        { "diff|--against|$/their.pref", 0, differences },
        { "diff|--against|-", 0, differences, "", xml },
        { "diff|--against|$/user-pref.xml", 0, "" },
        { "diff|--json|--against|$/their.pref", 0,
            "{\n    \"BOOL\": {\n        \"here\": true,\n        \"there\": false\n    },\n"
            "    \"OURS\": {\n        \"here\": \"a\\tb\"\n    },\n"
            "    \"THEIRS\": {\n        \"there\": \"7\"\n    }\n}\n" },
        { "diff|--against|$/damaged.xml", 3, "", "damaged.xml is no user's file" },
        { "diff|--against|$/install/resources/prefs.xml", 3, "", "prefs.xml is no user's file" },
        { "diff|--against|-", 3, "", "- is no user's file", "<svg><int id='INT' value='5'/></svg>" },
        { "diff|--against|-", 3, "", "- is no user's file", QByteArray("INT 5\n\0x", 8) },
        { "diff|--against|$/missing", 3, "", "missing cannot be read" },
        { "diff|--against|$/install", 3, "", "install cannot be read" },
    });
    EXPECT_EQ(readFile(u"damaged.xml"_s), "<prefer") << "their file was mended";

    // Fonts that are not on this machine can be compared as well.
    userFile("<font id='FONT' value='our font'/>");
    expect({ { "diff|--against|-", 0, "FONT\ttheir font\tour font\n", "", "FONT \"Their Font\"\n" } });
}
