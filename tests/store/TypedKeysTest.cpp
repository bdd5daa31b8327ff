#include "PR_IntItem.h"
#include "PR_PreferenceTesting.h"
#include "StoreTest.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {
constexpr PR_Key<bool> Flag{ u"FLAG", true };
constexpr PR_Key<int> Count{ u"COUNT", 3, 1, 9 };
constexpr PR_Key<double> Part{ u"PART", 0.5 };
constexpr PR_Key<unsigned int> Color{ u"COLOR", 0xff010203U };
constexpr PR_Key<QString> Text{ u"TEXT", u"text" };
constexpr PR_Key<QKeySequence> Shortcut{ u"SHORTCUT", u"Ctrl+S" };
constexpr PR_Key<PR_FontName> Font{ u"FONT", u"Times" };
constexpr PR_Key<int> Locked{ u"LOCKED", 1, 0, 5 };
constexpr PR_Key<int> Missing{ u"MISSING", 7, 0, 9 };

class TypedKeysTest : public StoreTest {
protected:
    TypedKeysTest()
    {
        define(category("<bool id='FLAG' value='true'/><int id='COUNT' value='3' min='1' max='9'/>"
                        "<double id='PART' value='0.5'/><color id='COLOR' red='1' green='2' blue='3'/>"
                        "<string id='TEXT' value='text'/><shortcut id='SHORTCUT' value='Ctrl+S'/>"
                        "<font id='FONT' value='Times'/><int id='LOCKED' value='1' facilityOverride='true'/>"));
        store = std::make_unique<TestStore>(name);
        takeReports();
    }

    template <class T> void expectChange(PR_Key<T> const &key, T const &value)
    {
        EXPECT_EQ(store->value(key), T(key.defaultValue())) << key.text();
        EXPECT_TRUE(store->set(key, value)) << key.text();
        EXPECT_EQ(store->value(key), value) << key.text();
        store->reset(key);
        EXPECT_EQ(store->value(key), T(key.defaultValue())) << key.text();
    }

    std::unique_ptr<TestStore> store;
};
} // namespace

TEST_F(TypedKeysTest, ReadAndWriteEachType)
{
    expectChange(Flag, false);
    expectChange(Count, 9);
    expectChange(Part, 0.25);
    expectChange(Color, 0x80112233U);
    expectChange(Text, u"other"_s);
    expectChange(Shortcut, QKeySequence(u"Ctrl+Shift+T"_s));
    expectChange(Font, PR_FontName{ u"Courier"_s });

    EXPECT_FALSE(store->set(Count, 10)) << "outside of the declared range";
    EXPECT_FALSE(store->set(Font, PR_FontName{ u"None"_s }));
    EXPECT_TRUE(takeReports().empty());
    EXPECT_FALSE(store->set(Locked, 2));
    EXPECT_TRUE(store->isLocked(Locked) && !store->isLocked(Count));
    EXPECT_EQ(takeReports().size(), 1U) << "as of any write of a locked key";
    EXPECT_TRUE(store->set(Locked, 1)) << "it holds that value";
    takeReports();
    EXPECT_EQ(store->value(Missing), 7) << "the default of the key";
}

TEST_F(TypedKeysTest, SubscribersHearOfTheirKeyAlone)
{
    std::string heard;
    auto receiver = std::make_unique<QObject>();
    auto const note = [&heard](char const *who) {
        return [&heard, who](
                   int old, int now) { heard += std::string(who) + std::to_string(old) + std::to_string(now) + ' '; };
    };
    PR_Subscription handle = store->subscribe(Count, receiver.get(), note("a"));
    store->subscribe(Missing, store.get(), note("m"));
    auto const take = [&heard] { return std::exchange(heard, {}); };
    SignalCounter signalCounter(*store);
    store->set(Count, 4);
    store->set(Count, 4);
    store->set(Part, 0.75);
    EXPECT_EQ(take(), "a34 ");
    store->setIntValue(u"MISSING"_s, 8); // creates it
    EXPECT_EQ(take(), "m78 ");
    dynamic_cast<PR_IntItem *>(store->find(u"COUNT"_s))->setValue(5);
    EXPECT_EQ(take(), "");
    store->emitPreferenceChanged();
    EXPECT_EQ(take(), "a45 ");
    store->restoreDefault(u"COUNT"_s);
    EXPECT_EQ(take(), "a53 ");
    EXPECT_EQ(signalCounter.take(), 3) << "as without subscribers";

    {
        PR_PreferenceBatch const outer(*store);
        PR_PreferenceBatch const inner(*store);
        store->set(Count, 6);
        store->set(Count, 7);
        store->set(Part, 0.5);
        EXPECT_EQ(take(), "");
    }
    EXPECT_EQ(take(), "a37 ");
    EXPECT_EQ(signalCounter.take(), 1);

    writeFile(xmlName, "<preferences><int id='COUNT' value='2'/></preferences>");
    store->load();
    EXPECT_EQ(take(), "a72 m87 ");
    TestStore other(name);
    other.setIntValue(u"COUNT"_s, 1);
    store->copy(other);
    EXPECT_EQ(take(), "a21 ");
    handle.end();
    store->set(Count, 9);
    EXPECT_EQ(take(), "");
    // A receiver that deletes the store, or itself, ends the rest.
    store->subscribe(Count, receiver.get(), [&](int, int) { store.reset(); });
    store->subscribe(Count, receiver.get(), note("late"));
    EXPECT_TRUE(store->set(Count, 8));
    EXPECT_EQ(take(), "");
    takeReports();
}

TEST_F(TypedKeysTest, MisuseIsLoggedWhereItIsAskedFor)
{
    static QStringList lines;
    lines.clear();
    QtMessageHandler const usual =
        qInstallMessageHandler([](QtMsgType, QMessageLogContext const &, QString const &text) { lines.append(text); });
    for (bool const isOn : { false, true }) {
        QLoggingCategory::setFilterRules(isOn ? u"brivant.preference.misuse=true"_s : QString());
        for (int time = 0; time < 2; ++time) {
            (void)store->getIntValue(u"COUNTT"_s, 3);
            (void)store->getBool(u"COUNT"_s);
            store->setIntValue(u"COUNT"_s, 10);
            (void)store->getIntValue(u"COUNT"_s, 3);
        }
        store->setBoolValue(u"PART"_s, true); // replaces the item
        store->setDoubleValue(u"PART"_s, 1.0);
    }
    QLoggingCategory::setFilterRules({});
    qInstallMessageHandler(usual);
    EXPECT_EQ(lines,
        (QStringList{ u"COUNTT: there is no such key; the nearest key is COUNT"_s,
            u"COUNT: the item is of another type"_s, u"COUNT: the value is outside of the range"_s,
            u"PART: the item is of another type"_s }));
}

// As a module tests itself.
TEST(PreferenceTestingTest, GivesAStoreWithoutFiles)
{
    PR_TestPreferences preferences("<category id='General'><int id='COUNT' value='3' min='1' max='9'/></category>");
    {
        PR_ScopedPreference const scoped(preferences.store(), Count, 5);
        EXPECT_EQ(preferences->value(Count), 5);
    }
    EXPECT_EQ(preferences->value(Count), 3);
    EXPECT_EQ(preferences->find(u"COUNT"_s)->getOrigin(), PR_PrefItem::OriginDefault);
    EXPECT_EQ(preferences.takeMessages(), QStringList());
    EXPECT_EQ(tuPref, &preferences.store());
}
