#include "PR_BoolItem.h"
#include "PR_PrefItemFactory.h"
#include "StoreTest.h"

#include <QDir>
#include <QDomElement>
#include <QFile>

#include <functional>
#include <set>

using namespace Qt::StringLiterals;

namespace {
class DefinitionsTest : public StoreTest {
protected:
    // The user's file, which chooses the preference set "team".
    DefinitionsTest() { writeFile(xmlName, "<preferences><string id='PREFERENCE_SET' value='team'/></preferences>"); }

    std::string definitions(bool local = false) const
    {
        TestStore store(name, local, false);
        EXPECT_EQ(store.initPreferences(), PR_Preference::NoError);
        return text(store);
    }
};
} // namespace

TEST_F(DefinitionsTest, ItemsFollowFromTheMergedDefinitions)
{
    struct Row {
        char const *name;
        QByteArray main;
        char const *items;
        QByteArray set = {};
        QByteArray facility = {};
        std::function<void(HostPlatform &)> host = {};
    };
    auto const one = [](char const *attributes) { return category("<int id='K' " + QByteArray(attributes) + "/>"); };
    auto const application = [](bool panovia, int language) {
        return [=](HostPlatform &host) {
            host.appIsPanovia = panovia;
            host.languageID = language;
        };
    };
    QByteArray const terms = category("<bool id='ST_TERM_STYLE'/>");
    Row const rows[] = {
        { "each type",
            category("<bool id='B' value='true'/><color id='C' red='1'/><double id='D' value='1'/><font id='F' "
                     "value='times'/><int id='I' value='1'/><shortcut id='K' value='F1'/><string id='S' value='s'/>"),
            "bool B=Yes, color C=(  1   0   0 255), double D=1.000000, font F=times, int I=1, shortcut K=F1, string "
            "S=s" },
        { "other elements create nothing",
            "<int id='X'/>text<!-- note --><items>" + category("<int id='Y'/>") + "</items>"
                + category("text<enum id='E' value='a'/><category><int id='N'/></category><!-- note --><Int id='Z'/>"),
            "" },
        { "no id is an empty key", category("<int value='1'/><string/><shortcut/>"), "shortcut =" },
        { "unknown category is internal", category("<int id='K'/>", "general") + "<category><int id='L'/></category>",
            "int K=0 internal, int L=0 internal" },
        { "the last definition wins", one("value='1'") + category("<bool id='K'/>", "Sound"), "bool K=No" },
        { "the facility is stronger than the set", one("value='1'") + category("<int id='L'/>"), "int K=3, int L=2",
            one("value='2'") + category("<int id='L' value='2'/>"), one("value='3'") },
        { "the first lock stays", one("value='1' facilityOverride='TRUE'"), "int K=1 locked", one("value='2'"),
            one("value='3' facilityOverride='true'") },
        { "a set may lock", one("value='1'"), "int K=2 locked", one("value='2' facilityOverride='True'"),
            one("value='3'") },
        { "a lock is one word", one("facilityOverride=' true'") + category("<int id='L' facilityOverride='yes'/>"),
            "int K=0, int L=0" },
        { "an excluded definition replaces nothing", one("value='1'"), "int K=1", one("value='2' mode='paint'"),
            one("value='3' feature='rig'") },
        { "mode and platform of items and categories",
            "<category mode='not full'><int id='A'/></category><category platform='beos'><int id='B'/></category>"
            "<category mode='full' platform='not beos'><int id='C'/><int id='D' mode='scan'/><int id='E' "
            "platform='beos'/><int id='F' mode='full' platform='not beos'/></category>",
            "int C=0 internal, int F=0 internal" },
        { "features of items, categories and children",
            category("<int id='A' feature='rig'/><int id='B' feature='not rig'/><int id='C' feature='Rig'/>"
                     "<int id='D' feature='not light'/>")
                + "<category feature='light'><int id='E'/></category><category feature='sound'><int "
                  "id='F'/></category>",
            "int A=0, int D=0, int F=0 internal, int G=0",
            category("<int id='G' feature='sound'/><int id='H' feature='a'/>"), {},
            [](HostPlatform &host) {
                host.featureKeywords = QStringList{ u"rig"_s, u"sound"_s };
            } },
        { "no morphing", category("<int id='A_MORPH_B'/><int id='MORPH'/><int id='morph'/>"), "int morph=0" },
        { "morphing", category("<int id='A_MORPH_B'/><int id='morph'/>"), "int A_MORPH_B=0, int morph=0", {}, {},
            [](HostPlatform &host) { host.hasMorphing = true; } },
        { "terms of the language", terms, "bool ST_TERM_STYLE=Yes locked", {}, {}, application(true, 4) },
        { "terms without a definition", "", "bool ST_TERM_STYLE=Yes internal locked", {}, {}, application(true, 4) },
        { "terms of another language", terms, "bool ST_TERM_STYLE=No", {}, {}, application(true, 3) },
        { "terms of the other application", terms, "bool ST_TERM_STYLE=No", {}, {}, application(false, 4) },
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.name);
        HostPlatform const saved = host;
        if (row.host)
            row.host(host);
        define(row.main);
        define(row.set, setName);
        define(row.facility, overrideName);
        EXPECT_EQ(definitions(), row.items);
        host = saved;
    }
}

TEST_F(DefinitionsTest, ConditionsCompareWholeWords)
{
    auto const onPlatform = [](QByteArray const &word) {
        return PR_Preference::isValidOnThisPlatform(xmlElement("<int platform='" + word + "'/>"));
    };
    EXPECT_EQ(onPlatform("windows") + onPlatform("macosx") + onPlatform("linux"), 1);
    for (QByteArray const word : { "windows", "macosx", "linux" }) {
        EXPECT_NE(onPlatform(word), onPlatform("not " + word)) << word.data();
        EXPECT_FALSE(onPlatform(word.toUpper()) || onPlatform("Not " + word) || onPlatform(word + ' ')) << word.data();
    }

    char const *const full = "full|not paint|not scan|not |not Paint|not  full";
    std::pair<int, char const *> const modes[] = { { 2, "paint|not scan|not full|not |not Paint|not  full" },
        { 3, "scan|not paint|not full|not |not Paint|not  full" }, { 0, full }, { 7, full } };
    for (auto const &[mode, admitted] : modes) {
        host.mode = mode;
        EXPECT_TRUE(PR_Preference::isValidInThisMode(xmlElement("<int/>")));
        for (QByteArray const word : { "paint", "scan", "full", "not paint", "not scan", "not full", "not ",
                 "not Paint", "not  full", "not", "Paint", "" })
            EXPECT_EQ(PR_Preference::isValidInThisMode(xmlElement("<int mode='" + word + "'/>")),
                QByteArray(admitted).split('|').contains(word))
                << mode << word.data();
    }
}

TEST_F(DefinitionsTest, ASetOrOverrideThatCannotBeReadAsAWholeDefinesNothing)
{
    define(category("<int id='MAIN'/>"));
    QByteArray const lock = "<preferences><category id='General'><int id='MAIN' value='1' facilityOverride='true'/>";
    QByteArray const end = "</category></preferences>";
    std::vector<QByteArray> const contents{ "missing", "folder", "", lock,
        lock + "<string id='X'/><string id='Y' value='a & b'/>" + end, lock + end + "junk",
        lock + "<string id='X' id='X'/>" + end, lock + "</preferences>" };
    for (QString const &bad : { setName, overrideName }) {
        for (QByteArray const &content : contents) {
            define(category("<int id='SET'/>"), setName);
            define(category("<int id='OVERRIDE'/>"), overrideName);
            QString const file = u"install/resources/"_s + bad;
            QFile::remove(path(file));
            if (content == "folder")
                QDir().mkpath(path(file));
            else if (content != "missing")
                writeFile(file, content);
            EXPECT_EQ(definitions(), bad == setName ? "int MAIN=0, int OVERRIDE=0" : "int MAIN=0, int SET=0")
                << content.data();
            QDir().rmdir(path(file));
        }
    }
}

TEST_F(DefinitionsTest, TheMainFilesRootDecidesForAllFiles)
{
    struct Row {
        QByteArray main, set, facility; // attributes of the root elements
        char const *items;
    };
    char const *const all = "int MAIN=0, int OVERRIDE=0, int SET=0";
    Row const rows[] = {
        { "", "", "", all },
        { "feature='rig'", "", "", "" },
        { "feature='not rig'", "feature='rig'", "feature='rig'", all },
        { "feature='rig'", "feature='not rig'", "feature='not rig'", "" },
        { "feature='sound'", "feature='not sound'", "platform='beos' mode='scan'", all },
    };
    host.featureKeywords = QStringList{ u"sound"_s };
    auto const write = [this](QString const &file, QByteArray const &root, QByteArray const &items) {
        writeFile(u"install/resources/"_s + file, "<preferences " + root + '>' + category(items) + "</preferences>");
    };
    for (Row const &row : rows) {
        write(u"prefs.xml"_s, row.main, "<int id='MAIN'/><int id='RIG' feature='rig'/>");
        write(setName, row.set, "<int id='SET'/><deep><int id='SET'/></deep><int id='RIG' feature='rig'/>");
        write(overrideName, row.facility, "<int id='OVERRIDE'/><int id='RIG' feature='rig'/>");
        EXPECT_EQ(definitions(), row.items) << row.main.data() << row.set.data() << row.facility.data();
    }
}

TEST_F(DefinitionsTest, AHostsFactorySeesWhatTheConditionsLeave)
{
    struct Factory : PR_AbstractPrefItemFactory {
        using PR_AbstractPrefItemFactory::PR_AbstractPrefItemFactory;
        PR_PrefItem *create(PR_PrefItem::Category category, QString const &key, QDomElement const &element) override
        {
            seen = element.firstChildElement().attribute(u"name"_s) + element.lastChildElement().attribute(u"name"_s);
            return new PR_BoolItem(category, key, false);
        }
        QString seen;
    };
    static Factory factory(u"seen"_s);
    factory.registerClass();
    define(category(
        "<seen id='S'><p name='1' feature='not x'/><p name='2' feature='x'/><p name='3' feature='x'/></seen>"));
    TestStore const store(name);
    EXPECT_EQ(factory.seen, u"11"_s);
}

TEST_F(DefinitionsTest, TheFlavourChoosesTheFiles)
{
    writeFile(u"user-localpref.xml"_s, readFile(xmlName));
    for (QString const &installation : { u"install"_s, u"My PANOVIA 3"_s }) {
        for (QString const &file :
            { u"prefs"_s, u"pv_prefs"_s, u"localPrefs"_s, u"pv_localPrefs"_s, u"prefs_override"_s,
                u"pv_prefs_override"_s, u"preferenceSets/norvelle/team"_s, u"preferenceSets/panovia/team"_s })
            writeFile(installation + u"/resources/"_s + file + u".xml"_s,
                "<preferences>" + category("<int id='" + file.section(u'/', -2).toUtf8() + "'/>") + "</preferences>");
        for (bool const hasUI : { false, true }) {
            host.installFolder = path(installation);
            host.hasPanoviaPreferenceUI = hasUI;
            host.appIsPanovia = !hasUI; // is not asked
            bool const panovia = hasUI || installation != u"install";
            EXPECT_EQ(definitions(),
                panovia ? "int panovia/team=0, int pv_prefs=0, int pv_prefs_override=0"
                        : "int norvelle/team=0, int prefs=0, int prefs_override=0");
            EXPECT_EQ(definitions(true),
                panovia ? "int panovia/team=0, int pv_localPrefs=0, int pv_prefs_override=0"
                        : "int localPrefs=0, int norvelle/team=0, int prefs_override=0");
        }
    }
}

TEST_F(DefinitionsTest, ThePreferenceSetIsTheFirstStringOfThatName)
{
    define("");
    define(category("<int id='A'/>"), u"preferenceSets/norvelle/a.xml"_s);
    define(category("<int id='B'/>"), u"preferenceSets/norvelle/b.xml"_s);
    define(category("<int id='ABOVE'/>"), u"above.xml"_s);
    std::pair<char const *, char const *> const rows[] = {
        { "<string id='PREFERENCE_SET' value='a'/><string id='PREFERENCE_SET' value='b'/>", "int A=0" },
        { "<deep><er><string id='PREFERENCE_SET' value='b'/></er></deep><string id='PREFERENCE_SET' value='a'/>",
            "int B=0" },
        { "<string id='PREFERENCE_SET' value=''/><string id='PREFERENCE_SET' value='b'/>", "" },
        { "<string id='PREFERENCE_SET'/>", "" },
        { "<String id='PREFERENCE_SET' value='a'/><string id='preference_set' value='a'/>", "" },
        { "<string id='PREFERENCE_SET' value='../../above'/>", "int ABOVE=0" },
    };
    for (auto const &[user, items] : rows) {
        writeFile(xmlName, "<root>" + QByteArray(user) + "</root>");
        EXPECT_EQ(definitions(), items) << user;
    }
}

TEST_F(DefinitionsTest, FilesAreOpenedThroughTheRemappedPath)
{
    define(category("<int id='MAIN'/>"));
    define(category("<int id='SET'/>"), setName);
    define(category("<int id='OVERRIDE'/>"), overrideName);
    host.installFolder = u"/stored"_s;
    host.remapPath = [this](
                         QString const &stored) { return QString(stored).replace(u"/stored"_s, path(u"install"_s)); };
    EXPECT_EQ(definitions(), "int MAIN=0, int OVERRIDE=0, int SET=0");
    QFile::remove(path(u"install/resources/prefs.xml"_s));
    TestStore(name, false, false).initPreferences();
    EXPECT_EQ(takeReports(), Reports{ "5 Unable to open preference file (/stored/resources/prefs.xml)" });
}

TEST_F(DefinitionsTest, TheShippedFilesLoadWhole)
{
    host.installFolder = QStringLiteral(BRIVANT_RESOURCES "/..");
    host.hasMorphing = true;
    writeFile(xmlName, "<preferences/>");
    writeFile(u"user-localpref.xml"_s, "<preferences/>");
    for (QString const &name : { u"prefs.xml"_s, u"localPrefs.xml"_s, u"pv_prefs.xml"_s, u"pv_localPrefs.xml"_s }) {
        bool const local = name.contains(u"local"_s);
        host.hasPanoviaPreferenceUI = name.startsWith(u"pv_"_s);
        TestStore const store(this->name, local);

        std::set<QString> types;
        for (PR_PrefItem const *item : store) {
            types.insert(item->getTag());
            EXPECT_NE(item->getCategory(), PR_PrefItem::Internal) << name << item->getKey();
            EXPECT_FALSE(item->getShortDescription().startsWith(u"No short"_s)) << name << item->getKey();
            EXPECT_FALSE(item->getLongDescription().startsWith(u"No long"_s)) << name << item->getKey();
        }
        EXPECT_TRUE(local || types.size() == 7);
    }
}
