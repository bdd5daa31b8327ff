#include "StoreTest.h"

#include "PR_IntItem.h"

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <sstream>

using namespace Qt::StringLiterals;

namespace {
constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

class AccessTest : public StoreTest {
protected:
    // A store with an item of each kind, its tag the key, and a locked one.
    std::unique_ptr<TestStore> makeStore() const
    {
        QByteArray const items =
            "<bool id='bool' value='true'/><int id='int' value='7' min='0' max='9'/><double id='double' value='-2.9'/>"
            "<color id='color' red='1' green='2' blue='3' alpha='4'/><string id='string' value='12'/>"
            "<font id='font' value='courier'/><shortcut id='shortcut' value='Ctrl+S'/>";
        define(category(items + QByteArray(items).replace("id='", "facilityOverride='true' id='locked ")));
        writeFile(xmlName, "<preferences/>");
        return std::make_unique<TestStore>(name);
    }

    // What all reads give for a key: those by reference, then those with a default ("d").
    std::string reads(QString const &key) const
    {
        auto const number = [](double value) { return value == -1 ? "d" : QString::number(value).toStdString(); };
        std::ostringstream out;
        bool const yes = store.getBoolValue(key, false);
        out << store.getBool(key) << ' ' << store.getInt(key) << ' ' << store.getEnum(key) << ' '
            << store.getDouble(key) << ' ' << std::hex << store.getRgba(key) << " ["
            << store.getString(key).toStdString() << "] ["
            << store.getKey(key).toString(QKeySequence::PortableText).toStdString() << "], "
            << (yes == store.getBoolValue(key, true) ? number(yes) : "d") << ' ' << number(store.getIntValue(key, -1))
            << ' ' << number(store.getDoubleValue(key, -1)) << ' ' << number(store.getEnumValue(key, -1)) << ' '
            << store.getRgbaValue(key, 9) << ' ' << store.getStringValue(key, u"d"_s).toStdString() << ' '
            << store.getFontValue(key, u"d"_s).toStdString();
        return out.str();
    }

    std::unique_ptr<TestStore> owner = makeStore();
    TestStore &store = *owner;
};
} // namespace

TEST_F(AccessTest, ReadsGiveTheItemsValueOrTheFallback)
{
    store.setEnumValue(u"enum"_s, 3);
    for (QString const &value : { u"yes"_s, u"1 2 3 4"_s })
        store.setStringValue(value, value);
    // bool int enum double rgba string key, bool int double enum rgba string font
    std::pair<QString, char const *> const rows[] = {
        { u"bool"_s, "1 0 0 0 0 [] [], 1 d d d 9 Yes d" },
        { u"int"_s, "0 7 7 0 0 [] [], d 7 7 d 9 7 d" },
        { u"double"_s, "0 0 0 -2.9 0 [] [], d -2 -2.9 d 9 -2.900000 d" },
        { u"color"_s, "0 0 0 0 4010203 [] [], d d d d 4010203 (  1   2   3   4) d" },
        { u"string"_s, "0 0 0 0 0 [12] [], d 12 12 12 9 12 d" },
        { u"font"_s, "0 1 1 0 0 [] [], d d d 1 9 courier Courier" },
        { u"shortcut"_s, "0 0 0 0 0 [] [Ctrl+S], d d d d 9 Ctrl+S d" },
        { u"enum"_s, "0 3 3 0 0 [] [], d d d 3 9 3 d" },
        { u"yes"_s, "0 0 0 0 0 [yes] [], 1 d d d 9 yes d" },
        { u"1 2 3 4"_s, "0 0 0 0 0 [1 2 3 4] [], d d d d 4010203 1 2 3 4 d" },
        { u"INT"_s, "0 0 0 0 0 [] [], d d d d 9 d d" },
    };
    for (auto const &[key, expected] : rows)
        EXPECT_EQ(reads(key), expected) << key;
    EXPECT_EQ(&store.getBool(u"missing"_s), &store.getBool(u"int"_s)) << "one fallback for all";
}

TEST_F(AccessTest, DoublesReadAsIntegersAreTruncatedWhenTheyFit)
{
    double const infinity = std::numeric_limits<double>::infinity();
    std::pair<double, int> const rows[] = { { 2.9, 2 }, { 2147483647.9, greatest }, { -2147483648.9, least },
        { 2147483648.0, -1 }, { -2147483649.0, -1 }, { infinity, -1 }, { -infinity, -1 }, { std::nan(""), -1 } };
    for (auto const &[value, expected] : rows) {
        store.setDoubleValue(u"double"_s, value);
        EXPECT_EQ(store.getIntValue(u"double"_s, -1), expected) << value;
    }
}

TEST_F(AccessTest, WritesChangeReplaceCreateOrRefuse)
{
    struct {
        QString tag;
        std::function<void(PR_Preference &, QString const &)> set;
        QString value;
    } const setters[] = {
        { u"bool"_s, [](auto &s, auto &key) { s.setBoolValue(key, false); }, u"No"_s },
        { u"int"_s, [](auto &s, auto &key) { s.setIntValue(key, 15); }, u"15"_s },
        { u"double"_s, [](auto &s, auto &key) { s.setDoubleValue(key, 0.5); }, u"0.500000"_s },
        { u"enum"_s, [](auto &s, auto &key) { s.setEnumValue(key, 2); }, u"2"_s },
        { u"enum"_s, [](auto &s, auto &key) { s.setEnumValue(key, 0); }, u"0"_s },
        { u"color"_s, [](auto &s, auto &key) { s.setRgbaValue(key, 0xFF); }, u"(  0   0 255   0)"_s },
        { u"string"_s, [](auto &s, auto &key) { s.setStringValue(key, u"new"_s); }, u"new"_s },
    };
    QStringList const fonts{ u"arial"_s, u"courier"_s, u"times"_s };
    QStringList const keys{ u"bool"_s, u"int"_s, u"double"_s, u"color"_s, u"string"_s, u"font"_s, u"shortcut"_s,
        u""_s };
    for (auto const &setter : setters) {
        for (QString const &key : keys) {
            SCOPED_TRACE("set " + setter.tag.toStdString() + " on " + key.toStdString());
            owner = makeStore();
            SignalCounter notices(*owner);
            bool const isEnum = setter.tag == u"enum";
            bool const isOwn = setter.tag == key || (isEnum && key == u"font");
            bool const isIgnored = setter.tag == u"string" && !isOwn && !key.isEmpty();
            bool const isKept = isOwn || isIgnored;
            QString const value = isIgnored ? owner->getStringValue(key, {})
                : isOwn && isEnum           ? fonts[setter.value.toInt()]
                                            : setter.value;
            setter.set(*owner, key);
            PR_PrefItem const *item = owner->find(key);
            EXPECT_EQ(item->valueAsString(), value);
            EXPECT_EQ(item->getTag(), isKept ? key : setter.tag);
            EXPECT_EQ(item->getCategory(), isKept ? PR_PrefItem::General : PR_PrefItem::Internal);
            EXPECT_EQ(item->getOrigin(), isIgnored ? PR_PrefItem::OriginDefault : PR_PrefItem::OriginUser);
            // A new item holds the value from the start, but an enumeration begins at its first choice.
            EXPECT_EQ(notices.take(), isOwn || (isEnum && value != u"0") ? 1 : 0);
            if (auto const *integer = dynamic_cast<PR_IntItem const *>(item)) {
                EXPECT_EQ(integer->minValue(), isKept ? 0 : least);
                EXPECT_EQ(integer->maxValue(), isKept ? 9 : greatest);
            }
            std::string const all = text(*owner);
            setter.set(*owner, key); // unchanged
            if (!key.isEmpty())
                setter.set(*owner, u"locked "_s + key);
            EXPECT_EQ(text(*owner), all);
            EXPECT_EQ(notices.take(), 0);
            EXPECT_EQ(takeReports(),
                Reports(isIgnored || key.isEmpty() ? 0 : 1,
                    "4 This preference has been locked at the facility-wide level.\n Please see your system "
                    "administrator for details."));
        }
    }
}

TEST_F(AccessTest, EventsOnceDisabledStayOff)
{
    SignalCounter notices(store);
    store.emitPreferenceChanged();
    EXPECT_EQ(notices.take(), 1);
    store.disableEvents();
    store.emitPreferenceChanged();
    int const &value = store.getInt(u"int"_s);
    store.setIntValue(u"int"_s, 3);
    EXPECT_EQ(notices.take(), 0);
    EXPECT_EQ(value, 3) << "a reference shows later changes";
}

TEST_F(AccessTest, AKeyMayBelongToTheItemThatGoes)
{
    store.setIntValue(store.find(u"string"_s)->getKey(), 1);
    EXPECT_EQ(store.getIntValue(u"string"_s, -1), 1);
    store.deleteKey(store.find(u"string"_s)->getKey());
    EXPECT_EQ(store.find(u"string"_s), nullptr);
    store.deleteKey(u"string"_s);
    store.setIntValue(u"bool 2"_s, 1);
    store.deleteAllKeyBeginingWith(store.find(u"bool"_s)->getKey());
    EXPECT_EQ(store.find(u"bool 2"_s), nullptr);
}

TEST_F(AccessTest, AReceiverMayWriteOrDeleteTheStore)
{
    QObject::connect(&store, &PR_Preference::preferenceChanged, [this] { owner->setBoolValue(u"bool"_s, false); });
    store.setIntValue(u"int"_s, 1);
    EXPECT_FALSE(store.getBool(u"bool"_s));
    QObject::connect(&store, &PR_Preference::preferenceChanged, [this] { owner.reset(); });
    store.setEnumValue(u"new"_s, 2);
    EXPECT_EQ(owner, nullptr);
}

TEST_F(AccessTest, KeysAreVisitedInTheOrderOfTheirCodeUnits)
{
    store.clear();
    // A character beyond the first plane begins with a surrogate, which is less than U+FF21.
    QStringList const sorted{ u""_s, u"B"_s, u"a"_s, u"b"_s, u"bb"_s, u"\U0001F600"_s, u"\uFF21"_s };
    for (int i : { 3, 6, 0, 2, 5, 4, 1 })
        store.setBoolValue(sorted[i], true);
    QStringList visited;
    for (auto it = store.constBegin(); it != store.constEnd(); ++it) {
        visited.append((*it)->getKey());
        store.setBoolValue((*it)->getKey() + u"\uFFFF", true); // new items leave the position valid
        store.deleteKey((*it)->getKey() + u"\uFFFF");
    }
    EXPECT_EQ(visited, sorted);
}

TEST_F(AccessTest, ManyKeysComeAndGoInAnyOrder)
{
    store.clear();
    std::mt19937 random(7);
    std::map<QString, int> model;
    for (int step = 0; step < 20000; ++step) {
        QString const key = QString::number(random() % 700);
        switch (random() % 400) {
        case 0:
            store.deleteAllKeyBeginingWith(key);
            for (auto it = model.begin(); it != model.end();)
                it = it->first.startsWith(key) ? model.erase(it) : std::next(it);
            break;
        case 1: // a change of a key behind the back of the store
            if (auto *item = dynamic_cast<PR_IntItem *>(store.find(key)))
                *item = *static_cast<PR_IntItem *>(*store.constBegin());
            store.deleteAllKeyBeginingWith(u""_s);
            model.clear();
            break;
        default:
            if (random() % 3 == 0) {
                store.deleteKey(key);
                model.erase(key);
            } else {
                store.setIntValue(key, step);
                model[key] = step;
            }
        }
        QString const other = QString::number(random() % 700);
        auto const found = model.find(other);
        ASSERT_EQ(store.getIntValue(other, -1), found == model.end() ? -1 : found->second) << step;
        bool const inOrder = step % 64 != 0
            || std::equal(store.constBegin(), store.constEnd(), model.begin(), model.end(),
                [](PR_PrefItem const *item, auto const &entry) { return item->getKey() == entry.first; });
        ASSERT_TRUE(inOrder) << step;
    }
}

TEST_F(AccessTest, DefaultsComeBackSilentlyExceptForLockedAndInternalItems)
{
    std::string const before = text(store);
    store.setIntValue(u"int"_s, 1);
    store.setStringValue(u"string"_s, u"changed"_s);
    store.setIntValue(u"zz"_s, 1);
    store.setIntValue(u"zz"_s, 2);
    SignalCounter notices(store);
    store.restoreDefault(u"int"_s);
    store.restoreDefault(u"missing"_s);
    EXPECT_EQ(store.getInt(u"int"_s), 7);
    EXPECT_EQ(store.getString(u"string"_s), u"changed"_s);
    store.restoreDefaults();
    EXPECT_EQ(text(store), before + ", int zz=2 internal");
    store.deleteAllKeyBeginingWith(u"zz"_s);
    EXPECT_EQ(text(store), before);
    EXPECT_EQ(notices.take(), 0);
}

TEST_F(AccessTest, TheFlavourSetsThreePreferences)
{
    store.clear();
    SignalCounter notices(store);
    for (bool const flavour : { true, false }) {
        store.setPrefsFlavour(flavour);
        for (char const *key :
            { "DRAWING_SELECT_TOOL_IS_LASSO", "CAMERA_PASTE_FORCE_KEY_FRAME", "TIMELINE_PASTE_FORCE_KEY_FRAME" })
            EXPECT_EQ(store.getBoolValue(QString::fromLatin1(key), flavour), !flavour) << key;
        EXPECT_EQ(notices.take(), flavour ? 0 : 3) << "created, then changed";
    }
}
