#include "ProgramTest.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {
class PrefsTest : public ProgramTest { };
} // namespace

TEST_F(PrefsTest, ReadsAndFilters)
{
    userFile("<string id='STRING' cdata='true'><![CDATA[a\tb\nc\\]]></string><font id='FONT' value='my font'/>"
             "<int id='UNKNOWN' value='7'/><font id='OTHER_FONT' value='your font'/>");
    QByteArray const changedFonts = "FONT\tfont\tmy font\nOTHER_FONT\tfont\tyour font\n";
    QByteArray const changedOthers = "STRING\tstring\ta\\tb\\nc\\\\\nUNKNOWN\tint\t7\n";
    expect({
        { "get|INT", 0, "3\n" },
        { "get|STRING", 0, "a\tb\nc\\\n" },
        { "get|int", 1, "", "no preference int" },
        { "get|a\x7F\n\x1B", 1, "", "no preference a\\x7f\\n\\x1b.\n" },
        { "list|--changed", 0, changedFonts + changedOthers },
        { "list|--category|Timeline|--changed", 0, changedFonts },
        { "list|--category|Internal", 0, "UNKNOWN\tint\t7\n" },
        { "list|--category|timeline", 2, "", "no category \"timeline\"" },
        { "describe|INT", 0,
            "Key: INT\nType: int\nCategory: General\nValue: 3\nDefault: 3\nRange: -9 to 9\nLocked: no\n"
            "Origin: default\nShort description: Cells\nLong description: Cells held.\n" },
        { "describe|DOUBLE", 0,
            "Key: DOUBLE\nType: double\nCategory: General\nValue: 0.500000\nDefault: 0.500000\nPercentage: yes\n"
            "Locked: no\nOrigin: default\nShort description: \nLong description: \n" },
    });
}

TEST_F(PrefsTest, ShowsWhatIsKeptBesideThePreferences)
{
    writeFile(u"config/Brivant Animation/localcache.xml"_s,
        "<preferences><string id='LOCAL_CACHE_ROOT' value='" + path(u"cache"_s).toUtf8()
            + "'/><int id='MAX_COUNT_SCENES_LOCAL_CACHE' value='1'/>"
              "<string id='e/s/old' value='{\"lastused\":\"2024-01-02T03:04:05\"}'/><string id='e/s/gone' value=''/>"
              "</preferences>");
    writeFile(u"cache/e/s/old/file"_s, "x");
    expect({ { "scenes", 0,
        "e/s/gone\tunknown\tno cache\tgoes next\t$/cache/e/s/gone\n"
        "e/s/old\t2024-01-02T03:04:05\tcache\tgoes next\t$/cache/e/s/old\n" } });
    EXPECT_EQ(readFile(u"cache/e/s/old/file"_s), "x");

    userFile("<int id='XSHEET_LINE_HOLD' value='7'/>");
    QByteArray const cached = QByteArray::fromStdString(run({ u"cached"_s }).out);
    EXPECT_TRUE(cached.contains("\nXsheetLineHold\tXSHEET_LINE_HOLD\tint\t7\n"));
    EXPECT_TRUE(cached.contains("\nNVRigCacheMissingColor\tNV_RIG_CACHE_MISSING_COLOR\tunsigned int\t#ffff0000\n"));
}

TEST_F(PrefsTest, RefusesWrongUsage)
{
    expect({
        { "", 2, "", "verb is missing" },
        { "frobnicate", 2, "", "no verb \"frobnicate\"" },
        { "explain", 2, "", "explain takes KEY...\n" },
        { "set|INT", 2, "", "set takes KEY VALUE" },
        { "list|INT", 2, "", "list takes no arguments" },
        { "get|INT|--changed", 2, "", "get takes no --changed" },
        { "--mode|ink|list", 2, "", "full paint scan" },
        { "cached|--local", 2, "", "main store" },
        { "list|--version", 0, "prefs " PREFS_VERSION "\n" },
    });
}

TEST_F(PrefsTest, SetsEachType)
{
    userFile("<font id='FONT' value='my font'/><font id='OTHER_FONT' value='your font'/>");
    struct Value {
        char const *key;
        char const *text;
        char const *readBack; // null: refused
    };
    Value const values[] = {
        { "BOOL", "n", "No" },
        { "BOOL", "TRUE", "Yes" },
        { "BOOL", "maybe", nullptr },
        { "INT", "-9", "-9" },
        { "INT", "10", nullptr },
        { "INT", "2.5", nullptr },
        { "DOUBLE", "-2.5e-3", "-0.002500" },
        { "DOUBLE", "nan", nullptr },
        { "DOUBLE", "1,5", nullptr },
        { "COLOR", "#0a0B0c", "( 10  11  12 255)" },
        { "COLOR", "#80ffFF00", "(255 255   0 128)" },
        { "COLOR", "0 128 255", "(  0 128 255 255)" },
        { "COLOR", "(  1   2   3   4)", "(  1   2   3   4)" },
        { "COLOR", "1 2 256", nullptr },
        { "COLOR", "#12345", nullptr },
        { "STRING", "\xC3\xA9\n\\", "\xC3\xA9\n\\" },
        { "KEY", "ctrl+shift+a", "Ctrl+Shift+A" },
        { "KEY", "Ctrl+X, Ctrl+C", nullptr },
        { "FONT", "YOUR Font", "your font" },
        { "FONT", "no such font", nullptr },
    };
    for (Value const &value : values) {
        QByteArray const set = QByteArray("set|") + value.key + '|' + value.text;
        QByteArray const get = QByteArray("get|") + value.key;
        if (value.readBack)
            expect({ { set.constData(), 0, "" }, { get.constData(), 0, QByteArray(value.readBack) + '\n' } });
        else
            expect({ { set.constData(), 6, "", "is no value of" } });
    }
    expect({ { "get|INT", 0, "-9\n" }, { "get|OTHER_FONT", 0, "your font\n" } });
}

TEST_F(PrefsTest, WritesOnlyWhatChanges)
{
    expect({
        { "set|INT|3", 0, "" },
        { "reset|INT", 0, "" },
        { "set|MISSING|1", 1, "", "no preference MISSING" },
        { "set|LOCKED|2", 5, "", "locked at the facility-wide level" },
        { "reset|LOCKED", 5, "", "LOCKED was left as it is" },
        { "--user|$/file/user.pref|set|INT|3", 0, "" },
        { "--user|$/file/user.pref|set|INT|4", 4, "", "not saved" },
        { "--user|$/file/user.pref|reset|INT", 0, "" },
    });
    EXPECT_FALSE(QFile::exists(path(u"user-pref.xml"_s)));

    userFile("<int id='INT' value='4'/><int id='UNKNOWN' value='7'/><font id='FONT' value='a font elsewhere'/>");
    expect({
        { "reset|UNKNOWN", 1, "", "no definition" },
        { "set|UNKNOWN|8", 0, "" },
        { "reset|INT", 0, "" },
        { "list|--changed", 0, "FONT\tfont\ta font elsewhere\nUNKNOWN\tint\t8\n" },
        { "set|STRING|--|--text", 0, "" },
        { "get|STRING", 0, "--text\n" },
    });
    EXPECT_FALSE(readFile(u"user-pref.xml"_s).contains("\"INT\""));
}

TEST_F(PrefsTest, KeepsFontsOfLegacyTextFile)
{
    writeFile(u"user.pref"_s, "FONT \"A Font Elsewhere\"\nINT 4\n");
    expect({ { "set|BOOL|no", 0, "" }, { "get|FONT", 0, "a font elsewhere\n" }, { "get|INT", 0, "4\n" } });
}

TEST_F(PrefsTest, LeavesFilesThatCannotBeRead)
{
    writeFile(u"folder-pref.xml/kept"_s, "");
    expect({
        { "--user|$/folder.pref|set|INT|4", 3, "", "folder-pref.xml" },
        { "--user|$/folder.pref|get|INT", 3, "", "cannot be loaded" },
    });
    EXPECT_TRUE(QFile::exists(path(u"folder-pref.xml/kept"_s)));

    QByteArray const user = "<preferences><int id='INT' value='4'/></preferences>";
    writeFile(u"user-pref.xml"_s, user);
    writeFile(u"broken/resources/prefs.xml"_s, "<preferences");
    expect({
        { "--install|$/broken|set|INT|5", 3, "", "Unable to parse" },
        { "--install|$/missing|reset|INT", 3, "", "missing/resources/prefs.xml" },
        { "--local|list", 3, "", "localPrefs.xml" },
    });
    EXPECT_EQ(readFile(u"user-pref.xml"_s), user);
}

TEST_F(PrefsTest, ReadingMendsNothing)
{
    writeFile(u"damaged/user-pref.xml"_s, "<prefer");
    writeFile(u"damaged/user-pref.xml~"_s,
        "<preferences><int id='INT' value='4'/><int id='XSHEET_LINE_HOLD' value='7'/></preferences>");
    writeFile(u"damaged/user.pref"_s, "INT 5\n");
    commonArguments[3] = path(u"damaged/user.pref"_s);
    auto const files = [this] {
        std::string all;
        QDir const folder(path(u"damaged"_s));
        for (QString const &name : folder.entryList(QDir::Files | QDir::Hidden))
            all += name.toStdString() + '\n' + readFile(u"damaged/"_s + name).toStdString() + '\n';
        return all;
    };
    std::string const before = files();
    std::pair<char const *, char const *> const rows[] = {
        { "get|INT", "4\n" },
        { "list|--changed", "INT\tint\t4\n" },
        { "describe|INT", "Value: 4\n" },
        { "explain|INT", "user file\twon\t4\t$/damaged/user-pref.xml~:1\t\nValue: 4\n" },
        { "diff", "INT\t3\t4\n" },
        { "dump|--changed", "\"INT\": 4" },
        { "load|$/values.json|--dry-run", "INT\t4\t6\n" },
        { "cached", "\nXsheetLineHold\tXSHEET_LINE_HOLD\tint\t7\n" },
        { "check|$/damaged/user-pref.xml", "[not-xml]" },
    };
    writeFile(u"values.json"_s, "{\"INT\": 6}");
    for (auto const &[arguments, shown] : rows) {
        std::string const out = run(QString::fromLatin1(arguments).replace(u'$', path({})).split(u'|')).out;
        EXPECT_NE(out.find(shown), std::string::npos) << arguments << ": " << out;
        EXPECT_EQ(files(), before) << arguments;
    }

    expect({ { "set|BOOL|no", 0, "", "Backup preference file has been restored" }, { "get|INT", 0, "4\n" } });
    EXPECT_EQ(readFile(u"damaged/user-pref.xml.bad"_s), "<prefer");
}

TEST_F(PrefsTest, OptionsDescribeTheHost)
{
    define(category("<int id='PAINT' mode='paint'/><int id='SCAN' mode='scan'/><int id='FULL' mode='full'/>"
                    "<int id='FIRST' feature='first'/><int id='SECOND' feature='second'/><int id='MORPH_X'/>"));
    define(category("<int id='STORYBOARD'/>"), u"pv_prefs.xml"_s);
    define(category("<int id='MACHINE' value='1'/>"), u"localPrefs.xml"_s);
    expect({
        { "list", 0, "FULL\tint\t0\n" },
        { "--mode|paint|list", 0, "PAINT\tint\t0\n" },
        { "list|--mode|scan", 0, "SCAN\tint\t0\n" },
        { "list|--feature|first|--feature|second", 0, "FIRST\tint\t0\nFULL\tint\t0\nSECOND\tint\t0\n" },
        { "list|--morphing", 0, "FULL\tint\t0\nMORPH_X\tint\t0\n" },
        { "list|--flavour|panovia", 0, "STORYBOARD\tint\t0\n" },
        { "list|--verbose", 0, "FULL\tint\t0\n", "Unable to open preference file" },
        { "set|FULL|5", 0, "" },
        { "--local|set|MACHINE|2", 0, "" },
    });
    EXPECT_TRUE(readFile(u"user-pref.xml"_s).contains("FULL"));
    EXPECT_TRUE(readFile(u"user-localpref.xml"_s).contains("MACHINE"));

    commonArguments.resize(2);
    expect({ { "set|FULL|6", 0, "" }, { "--local|set|MACHINE|3", 0, "" } });
    EXPECT_TRUE(readFile(u"config/Brivant Animation/user-pref.xml"_s).contains("FULL"));
    EXPECT_TRUE(readFile(u"config/Brivant Animation/localpref.xml"_s).contains("MACHINE"));
}
