#include "StoreTest.h"

#include "PR_IntItem.h"

#include <cmath>
#include <limits>
#include <map>
#include <random>

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

    // The reads that give something else than their fallback or default, and what.
    std::string reads(QString const &key) const
    {
        QStringList found;
        auto const add = [&found](char const *read, auto const &value, auto const &otherwise, QString const &text) {
            if (!(value == otherwise))
                found.append(QLatin1String(read) + u' ' + text);
        };
        auto const addNumber = [&add](char const *read, auto value, auto otherwise) {
            add(read, value, otherwise, QString::number(value));
        };
        auto const addText = [&add](char const *read, QString const &value, QString const &otherwise) {
            add(read, value, otherwise, value);
        };
        addNumber("getBool", int(store.getBool(key)), 0);
        addNumber("getInt", store.getInt(key), 0);
        addNumber("getEnum", store.getEnum(key), 0);
        addNumber("getDouble", store.getDouble(key), 0.0);
        add("getRgba", store.getRgba(key), 0U, QString::number(store.getRgba(key), 16));
        addText("getString", store.getString(key), QString());
        addText("getKey", store.getKey(key).toString(QKeySequence::PortableText), QString());
        bool const isBool = store.getBoolValue(key, true) == store.getBoolValue(key, false);
        add("getBoolValue", isBool, false, QString::number(store.getBoolValue(key, false)));
        addNumber("getIntValue", store.getIntValue(key, -1), -1);
        addNumber("getDoubleValue", store.getDoubleValue(key, -1), -1.0);
        addNumber("getEnumValue", store.getEnumValue(key, -1), -1);
        add("getRgbaValue", store.getRgbaValue(key, 9), 9U, QString::number(store.getRgbaValue(key, 9), 16));
        addText("getStringValue", store.getStringValue(key, u"-"_s), u"-"_s);
        addText("getFontValue", store.getFontValue(key, u"-"_s), u"-"_s);
        return found.join(u", "_s).toStdString();
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
    std::pair<QString, char const *> const rows[] = {
        { u"bool"_s, "getBool 1, getBoolValue 1, getStringValue Yes" },
        { u"int"_s, "getInt 7, getEnum 7, getIntValue 7, getDoubleValue 7, getStringValue 7" },
        { u"double"_s, "getDouble -2.9, getIntValue -2, getDoubleValue -2.9, getStringValue -2.900000" },
        { u"color"_s, "getRgba 4010203, getRgbaValue 4010203, getStringValue (  1   2   3   4)" },
        { u"string"_s, "getString 12, getIntValue 12, getDoubleValue 12, getEnumValue 12, getStringValue 12" },
        { u"font"_s, "getInt 1, getEnum 1, getEnumValue 1, getStringValue courier, getFontValue Courier" },
        { u"shortcut"_s, "getKey Ctrl+S, getStringValue Ctrl+S" },
        { u"enum"_s, "getInt 3, getEnum 3, getEnumValue 3, getStringValue 3" },
        { u"yes"_s, "getString yes, getBoolValue 1, getStringValue yes" },
        { u"1 2 3 4"_s, "getString 1 2 3 4, getRgbaValue 4010203, getStringValue 1 2 3 4" },
        { u"INT"_s, "" },
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

namespace {
using Write = void (*)(PR_Preference &store, QString const &key);
Write const setBool = [](auto &store, auto &key) { store.setBoolValue(key, false); };
Write const setInt = [](auto &store, auto &key) { store.setIntValue(key, 15); };
Write const setDouble = [](auto &store, auto &key) { store.setDoubleValue(key, 0.5); };
Write const setEnum = [](auto &store, auto &key) { store.setEnumValue(key, 2); };
Write const setFirstEnum = [](auto &store, auto &key) { store.setEnumValue(key, 0); };
Write const setRgba = [](auto &store, auto &key) { store.setRgbaValue(key, 0xFF); };
Write const setString = [](auto &store, auto &key) { store.setStringValue(key, u"new"_s); };
} // namespace

TEST_F(AccessTest, WritesChangeReplaceOrCreate)
{
    struct {
        Write write;
        QString key;
        char const *item; // afterwards
        int notices;
    } const rows[] = {
        { setBool, u"bool"_s, "bool bool=No user", 1 },
        { setInt, u"int"_s, "int int=15 user", 1 },
        { setDouble, u"double"_s, "double double=0.500000 user", 1 },
        { setEnum, u"font"_s, "font font=times user", 1 },
        { setRgba, u"color"_s, "color color=(  0   0 255   0) user", 1 },
        { setString, u"string"_s, "string string=new user", 1 },
        { setString, u"bool"_s, "bool bool=Yes", 0 }, // left alone
        // Created, or replaced by such a one. It holds the value from the start, but an enumeration begins at 0.
        { setBool, u"new"_s, "bool new=No internal", 0 },
        { setDouble, u"string"_s, "double string=0.500000 internal", 0 },
        { setRgba, u"double"_s, "color double=(  0   0 255   0) internal", 0 },
        { setString, u"new"_s, "string new=new internal", 0 },
        { setInt, u"font"_s, "int font=15 internal", 0 },
        { setInt, u"string"_s, "int string=15 internal", 0 },
        { setFirstEnum, u"new"_s, "enum new=0 internal", 0 },
        { setEnum, u"new"_s, "enum new=2 internal", 1 },
        { setEnum, u"shortcut"_s, "enum shortcut=2 internal", 1 },
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(row.item);
        owner = makeStore();
        SignalCounter notices(*owner);
        row.write(*owner, row.key);
        EXPECT_EQ(notices.take(), row.notices);
        std::string const all = ", " + text(*owner) + ", ";
        EXPECT_NE(all.find(", " + std::string(row.item) + ", "), std::string::npos) << all;
        if (auto const *item = dynamic_cast<PR_IntItem *>(owner->find(row.key))) {
            EXPECT_EQ(item->minValue(), row.notices ? 0 : least);
            EXPECT_EQ(item->maxValue(), row.notices ? 9 : greatest);
        }
        row.write(*owner, row.key);
        EXPECT_EQ(notices.take(), 0) << "unchanged";
    }
}

TEST_F(AccessTest, ALockedItemRefusesEachWriteAndTellsOnce)
{
    std::string const before = text(store);
    SignalCounter notices(store);
    for (Write const write : { setBool, setInt, setDouble, setEnum, setRgba }) {
        for (QString const &key : { u"locked bool"_s, u"locked string"_s }) {
            write(store, key);
            EXPECT_EQ(takeReports(),
                Reports{ "4 This preference has been locked at the facility-wide level.\n Please see your system "
                         "administrator for details." });
        }
    }
    setString(store, u"locked string"_s);
    EXPECT_EQ(takeReports().size(), 1U);
    setString(store, u"locked bool"_s); // no string: left alone
    EXPECT_EQ(text(store), before);
    EXPECT_EQ(notices.take(), 0);
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
    static constexpr PR_Key<int> other{ u"other", 0 };
    store.subscribe(other, &store, [](int, int) {});
    store.setIntValue(store.find(u"string"_s)->getKey(), 1);
    EXPECT_EQ(store.getIntValue(u"string"_s, -1), 1);
    store.deleteKey(store.find(u"string"_s)->getKey());
    EXPECT_EQ(store.find(u"string"_s), nullptr);
    store.deleteKey(u"string"_s);
    for (QString const &key : { u"bool 2"_s, u" bool"_s, u"Bool 2"_s })
        store.setIntValue(key, 1);
    store.deleteAllKeyBeginingWith(store.find(u"bool"_s)->getKey());
    EXPECT_EQ(store.find(u"bool 2"_s), nullptr);
    EXPECT_TRUE(store.find(u" bool"_s) && store.find(u"Bool 2"_s)) << "neither blanks nor case are passed over";
}

TEST_F(AccessTest, AReceiverMayWriteOrDeleteTheStore)
{
    QObject::connect(&store, &PR_Preference::preferenceChanged, [this] { owner->setBoolValue(u"bool"_s, false); });
    store.setIntValue(u"int"_s, 1);
    EXPECT_FALSE(store.getBool(u"bool"_s));
    QObject::connect(&store, &PR_Preference::preferenceChanged, [this] { owner.reset(); });
    store.setEnumValue(u"new"_s, 2);
    EXPECT_EQ(owner, nullptr);

    owner = makeStore();
    owner->setPrefsFlavour(true);
    QObject::connect(owner.get(), &PR_Preference::preferenceChanged, [this] { owner.reset(); });
    owner->setPrefsFlavour(false);
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

TEST_F(AccessTest, AnAssignedKeyDoesNotUpsetTheOrder)
{
    store.clear();
    for (QString const &key : { u"A"_s, u"B"_s, u"C"_s })
        store.setIntValue(key, 1);
    auto *const first = static_cast<PR_IntItem *>(*store.begin()); // makes the order
    *static_cast<PR_IntItem *>(store.find(u"C"_s)) = *first; // behind the back of the store
    store.deleteAllKeyBeginingWith(u"A"_s);
    EXPECT_EQ(text(store), "int B=1 internal");
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
    store.setIntValue(QString(), 1);
    store.deleteAllKeyBeginingWith(u""_s);
    EXPECT_EQ(text(store), "");
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
