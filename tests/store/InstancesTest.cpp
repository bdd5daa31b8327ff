#include "StoreTest.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {
using InstancesTest = StoreTest;

// A store without definitions, as a subclass may want it.
struct BareStore : TestStore {
    using TestStore::TestStore;
    Error initPreferences() override
    {
        clear();
        return NoError;
    }
};
} // namespace

TEST_F(InstancesTest, PathsFollowFromTheName)
{
    struct {
        QString name, main, local;
    } const rows[] = {
        { u"/p/user.pref"_s, u"/p/user-pref.xml"_s, u"/p/user-localpref.xml"_s },
        { u"/p/localpref"_s, u"/p/localpref.xml"_s, u"/p/localpref.xml"_s },
        { u"/p/user.PREF"_s, u"/p/user.PREF.xml"_s, u"/p/user.PREF.xml"_s },
        { u"a.pref.xml/b.pref"_s, u"a-pref.xml/b-pref.xml"_s, u"a-localpref.xml/b-localpref.xml"_s },
        { u""_s, u""_s, u""_s },
    };
    for (auto const &row : rows) {
        for (bool const local : { false, true }) {
            TestStore const store(row.name, local, false);
            EXPECT_EQ(store.getPath(), row.name);
            EXPECT_EQ(store.getPathXml(), local ? row.local : row.main);
            EXPECT_EQ(store.getErrorCode(), PR_Preference::NoError);
            EXPECT_EQ(text(store), "");
            EXPECT_EQ(store.getInt(u"K"_s), 0);
        }
    }
}

TEST_F(InstancesTest, InitLoadsByTheSubclassTheConstructorByTheBase)
{
    define(category("<int id='DEFINED' value='1'/>"));
    writeFile(xmlName, "<preferences><int id='USER' value='2'/></preferences>");
    BareStore store(name);
    EXPECT_EQ(text(store), "int DEFINED=1, int USER=2 internal");
    store.init();
    EXPECT_EQ(text(store), "int USER=2 internal");

    TestStore late(path(u"none.pref"_s), true, false);
    EXPECT_EQ(late.load(), PR_Preference::DefaultFileNotFound);
    EXPECT_EQ(late.getErrorCode(), PR_Preference::NoError) << "a load alone keeps no result";
    late.init();
    EXPECT_EQ(late.getErrorCode(), PR_Preference::DefaultFileNotFound);
    EXPECT_EQ(TestStore(late).getErrorCode(), PR_Preference::NoError);
    EXPECT_EQ(takeReports().size(), 2U);
}

TEST_F(InstancesTest, AReportDuringALoadMayAskForTheStoreAgain)
{
    // A box that shows the report runs an event loop: anything may happen in it.
    QByteArray const definitions = "<preferences>" + category("<int id='K' value='1'/>") + "</preferences>";
    struct {
        QByteArray definitions, user;
        int error;
        char const *items;
    } const rows[] = {
        { definitions, {}, 0, "int K=1" },
        { definitions, "<preferences><int id='K' value='2'/></preferences>", 0, "int K=2 user" },
        { definitions, "<damaged", 0, "int K=1" },
        { "<damaged", "<preferences><int id='K' value='2'/></preferences>", 1, "" },
    };
    for (auto const &row : rows) {
        writeFile(u"install/resources/prefs.xml"_s, row.definitions);
        QFile::remove(path(xmlName));
        if (!row.user.isEmpty())
            writeFile(xmlName, row.user);
        TestStore store(name, false, false);
        host.report = [&](HostReport const &) {
            EXPECT_EQ(store.load(), PR_Preference::NoError) << "the code of the load before";
            store.save();
            EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Failed);
        };
        store.init();
        EXPECT_EQ(store.getErrorCode(), row.error);
        EXPECT_EQ(text(store), row.items);
        EXPECT_EQ(readFile(xmlName), row.user);
    }
}

TEST_F(InstancesTest, TheLocalStoreIsNullWhileItIsMade)
{
    int inner = 0;
    host.specialFolders = { { 7, path(u"machine"_s) } };
    host.report = [&](HostReport const &) {
        EXPECT_EQ(localPrefs(), nullptr);
        ++inner;
    };
    PR_Preference *const store = localPrefs();
    EXPECT_NE(store, nullptr);
    EXPECT_GT(inner, 0);
    EXPECT_EQ(localPrefs(), store);
    EXPECT_EQ(store->getPathXml(), path(u"machine/Brivant Animation/localpref.xml"_s));
}

TEST_F(InstancesTest, CopiesAreEqualAndSeparate)
{
    define(category("<int id='I' value='1' shortDesc='short'/><font id='F' value='times'/><bool id='L' value='true' "
                    "facilityOverride='true'/><string id='S' value='s'/><shortcut id='K' value='F1'/>"),
        u"localPrefs.xml"_s);
    writeFile(u"user-localpref.xml"_s, "<preferences><color id='C' red='1'/><int id='I' value='2'/></preferences>");
    TestStore store(name, true);
    store.disableEvents();
    std::string const before = text(store);
    TestStore copy(store);
    EXPECT_EQ(text(copy), before);
    EXPECT_EQ(copy.getPath(), store.getPath());
    EXPECT_EQ(copy.getPathXml(), store.getPathXml());
    EXPECT_EQ(copy.find(u"I"_s)->getShortDescription(), u"short"_s);
    SignalCounter notices(copy);
    copy.setIntValue(u"I"_s, 3);
    EXPECT_EQ(notices.take(), 1) << "the events switch is not copied";
    EXPECT_EQ(copy.initPreferences(), PR_Preference::NoError) << "a copy of a local store is local";
    store.copy(store);
    EXPECT_EQ(text(store), before);

    TestStore filled(path(u"other.pref"_s), false, false);
    filled.setIntValue(u"OLD"_s, 1);
    filled.setStringValue(u"I"_s, u"other class"_s);
    filled.copy(store);
    store.clear();
    EXPECT_EQ(text(filled), before);
    EXPECT_EQ(filled.getPath(), path(u"other.pref"_s));
}
