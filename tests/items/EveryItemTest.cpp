#include "ItemTest.h"
#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_FontItem.h"
#include "PR_IntItem.h"
#include "PR_KeyItem.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"
#include "TULex.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {
using Item = std::unique_ptr<PR_PrefItem>;

// One type of item with two values of it: the default of its definition and another one.
struct ItemType {
    QByteArray tag;
    PR_PrefItem::Type type;
    QByteArray definition, defaultInFile, otherInFile; // attributes
    QString defaultShown, otherShown;
    QByteArray otherTokens, badTokens; // of the legacy text; empty: none is bad
    QByteArray badInFile;
    std::function<Item(PR_PrefItem::Category, QString const &key, QDomElement const &definition)> make = {};
    std::function<bool(PR_PrefItem &)> setDefault = {};
    std::function<bool(PR_PrefItem &)> setOther = {};
};

template <class T, class Value> ItemType itemType(Value const &defaultValue, Value const &otherValue, ItemType texts)
{
    texts.make = [](auto category, auto const &key, auto const &definition) {
        return std::make_unique<T>(category, key, definition);
    };
    texts.setDefault = [=](PR_PrefItem &item) { return static_cast<T &>(item).setValue(defaultValue); };
    texts.setOther = [=](PR_PrefItem &item) { return static_cast<T &>(item).setValue(otherValue); };
    return texts;
}

class EveryItem : public HostTest, public testing::WithParamInterface<ItemType> {
protected:
    Item make(PR_PrefItem::Category category = PR_PrefItem::General) const
    {
        return type.make(category, u"KEY"_s, element(type.definition));
    }
    TULex open(QByteArray const &text) const
    {
        TULex lex;
        EXPECT_TRUE(lex.openFile(writeFile(u"legacy.txt"_s, text)));
        return lex;
    }

    ItemType const &type = GetParam();
    QString const savedDefault = describe(element(type.defaultInFile, type.tag));
    QString const savedOther = describe(element(type.otherInFile, type.tag));
};
} // namespace

TEST_P(EveryItem, IsSavedOnceAUserSetIt)
{
    Item const item = make();
    EXPECT_EQ(item->getType(), type.type);
    EXPECT_TRUE(*item == QStringLiteral("KEY"));
    EXPECT_EQ(item->valueAsString(), type.defaultShown);
    EXPECT_FALSE(type.setDefault(*item)); // no change
    EXPECT_EQ(saved(*item), QString());
    EXPECT_EQ(saved(*item, true), savedDefault);

    EXPECT_TRUE(type.setOther(*item));
    EXPECT_FALSE(type.setOther(*item));
    EXPECT_EQ(saved(*item), savedOther);
    EXPECT_EQ(item->valueAsString(), type.otherShown);
    EXPECT_EQ(item->defaultValueAsString(), type.defaultShown);

    item->defaultInUser(); // touches no origin
    EXPECT_EQ(saved(*item), savedDefault);
    EXPECT_TRUE(type.setOther(*item));
    item->restoreDefault();
    EXPECT_EQ(saved(*item), QString());
    EXPECT_EQ(saved(*item, true), savedDefault);

    Item const internal = make(PR_PrefItem::Internal);
    EXPECT_EQ(saved(*internal), savedDefault);
    EXPECT_TRUE(type.setOther(*internal));
    internal->restoreDefault();
    EXPECT_EQ(saved(*internal), savedOther);
}

TEST_P(EveryItem, TakesItsElementOfTheUsersFile)
{
    Item const item = make();
    for (char const *id : { "id='KEY2' ", "id='key' ", "" })
        EXPECT_FALSE(item->loadXml(xmlElement(QByteArray("<x ") + id + type.otherInFile + "/>")));
    EXPECT_NE(item->loadXml(element(type.badInFile)), !type.badInFile.isEmpty());
    item->restoreDefault();
    EXPECT_TRUE(item->loadXml(element(type.defaultInFile)));
    EXPECT_EQ(saved(*item), savedDefault);
    EXPECT_TRUE(item->loadXml(element(type.otherInFile)));
    EXPECT_EQ(saved(*item), savedOther);
}

TEST_P(EveryItem, TakesItsTokensOfTheLegacyText)
{
    Item const item = make();
    for (bool const locked : { true, false }) {
        TULex lex = open("KEY2 KEY " + type.otherTokens + " NEXT");
        if (locked)
            item->setFacilityOverride();
        EXPECT_FALSE(item->load(lex));
        EXPECT_EQ(QString(lex), u"KEY2"_s);
        lex.get(false);
        EXPECT_TRUE(item->load(lex));
        EXPECT_EQ(QString(lex), u"NEXT"_s);
        EXPECT_EQ(saved(*item), locked ? QString() : savedOther);
        EXPECT_EQ(saved(*item, true), locked ? savedDefault : savedOther);
        item->removeFacilityOverride();
    }
    if (!type.badTokens.isEmpty()) {
        TULex lex = open("KEY " + type.badTokens);
        EXPECT_FALSE(item->load(lex));
        EXPECT_NE(QString(lex), u"KEY"_s);
        EXPECT_EQ(saved(*item), QString());
        EXPECT_EQ(saved(*item, true), savedOther);
    }
}

TEST_P(EveryItem, ALockRefusesEveryChange)
{
    Item const item = make();
    item->setFacilityOverride();
    EXPECT_TRUE(item->loadXml(element(type.otherInFile)));
    EXPECT_NE(item->loadXml(element(type.badInFile)), !type.badInFile.isEmpty());
    EXPECT_TRUE(item->hasFacilityOverride(false));
    EXPECT_TRUE(reports.empty());

    EXPECT_FALSE(type.setOther(*item));
    EXPECT_FALSE(type.setDefault(*item)); // reports too, though it would change nothing
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].context, u"PR_PrefItem"_s);
    EXPECT_EQ(reports[0].text,
        u"This preference has been locked at the facility-wide level.\n Please see your system administrator for "
        "details."_s);
    EXPECT_EQ(reports[0].action, 4);
    reports.clear();
    EXPECT_EQ(saved(*item), QString());
    EXPECT_EQ(saved(*item, true), savedDefault);

    item->removeFacilityOverride();
    EXPECT_FALSE(item->hasFacilityOverride(true));
    EXPECT_TRUE(type.setOther(*item));
    item->setFacilityOverride();
    item->restoreDefault();
    item->removeFacilityOverride();
    EXPECT_EQ(saved(*item), QString()); // the origin before the lock is forgotten
    EXPECT_EQ(saved(*item, true), savedOther);
}

TEST_P(EveryItem, CopiesAllButItsIdentity)
{
    Item source = make();
    EXPECT_EQ(source->getShortDescription(), u"No short description available"_s);
    EXPECT_EQ(source->getLongDescription(), u"No long description available"_s);
    source->setShortDescription(u"short"_s);
    source->setLongDescription(u"long"_s);
    type.setOther(*source);
    Item const target = type.make(PR_PrefItem::Sound, u"TARGET"_s, element(type.otherInFile));
    target->copy(source.get());
    Item const clone(source->clone());
    source.reset();

    EXPECT_EQ(target->getKey(), u"TARGET"_s);
    EXPECT_EQ(target->getCategory(), PR_PrefItem::Sound);
    EXPECT_EQ(clone->getCategory(), PR_PrefItem::General);
    EXPECT_EQ(saved(*clone), savedOther); // key and tag included
    for (PR_PrefItem *copy : { target.get(), clone.get() }) {
        EXPECT_EQ(copy->getType(), type.type);
        EXPECT_EQ(copy->getShortDescription(), u"short"_s);
        EXPECT_EQ(copy->getLongDescription(), u"long"_s);
        EXPECT_EQ(copy->valueAsString(), type.otherShown);
        EXPECT_EQ(copy->defaultValueAsString(), type.defaultShown);
        EXPECT_NE(saved(*copy), QString()); // the origin
    }
    clone->setFacilityOverride();
    target->copy(clone.get());
    EXPECT_TRUE(target->hasFacilityOverride(false));
}

INSTANTIATE_TEST_SUITE_P(Types, EveryItem,
    testing::Values(itemType<PR_BoolItem>(true, false,
                        { "bool", PR_PrefItem::Other, "value='true'", "value='Y'", "value='N'", u"Yes"_s, u"No"_s, "no",
                            "maybe", {} }),
        itemType<PR_IntItem>(3, -15,
            { "int", PR_PrefItem::Other, "value='3'", "value='3'", "value='-15'", u"3"_s, u"-15"_s, "-15", "12abc",
                "value='12abc'" }),
        itemType<PR_DoubleItem>(0.5, 1234570.0,
            { "double", PR_PrefItem::Other, "value='0.5'", "value='0.5'", "value='1.23457e+06'", u"0.500000"_s,
                u"1234570.000000"_s, "1234570", "1,5", "value=''" }),
        itemType<PR_RgbaItem>(0xFFFF8040U, 0x01020304U,
            { "color", PR_PrefItem::Color, "red='255' green='128' blue='64'",
                "red='255' green='128' blue='64' alpha='255'", "red='2' green='3' blue='4' alpha='1'",
                u"(255 128  64 255)"_s, u"(  2   3   4   1)"_s, "2 3 4 1", "2 3 4 x", {} }),
        itemType<PR_StringItem>(u"plain"_s, u"two  words"_s,
            { "string", PR_PrefItem::Other, "value='plain'", "value='plain'", "value='two  words'", u"plain"_s,
                u"two  words"_s, "\"two  words\"", {}, {} }),
        itemType<PR_KeyItem>(int(Qt::CTRL) | Qt::Key_S, int(Qt::ALT) | Qt::Key_Comma,
            { "shortcut", PR_PrefItem::Shortcut, "value='Ctrl+S'", "value='Ctrl+S'", "value='Alt+,'", u"Ctrl+S"_s,
                u"Alt+,"_s, "Alt+,", {}, {} }),
        itemType<TestEnumItem>(0, 1,
            { "speed", PR_PrefItem::Other, "value='speed'", "value='fast'", "value='nice'", u"fast"_s, u"nice"_s,
                "NICE", {}, {} }),
        itemType<PR_FontItem>(1, 2,
            { "font", PR_PrefItem::Other, "value='COURIER'", "value='courier'", "value='times'", u"courier"_s,
                u"times"_s, "Times", {}, {} })),
    [](testing::TestParamInfo<ItemType> const &info) { return info.param.tag.toStdString(); });
