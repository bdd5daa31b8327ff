#include "ItemTest.h"
#include "PR_FontItem.h"

using namespace Qt::StringLiterals;

namespace {
using ChoiceItemTest = HostTest;
constexpr auto General = PR_PrefItem::General;
} // namespace

TEST_F(ChoiceItemTest, NamesAndIndices)
{
    TestEnumItem item(General, u"KEY"_s, element("value='speed'"));
    struct {
        QString name;
        int index, indexDisplay;
    } const names[] = { { u"NICE"_s, 1, 0 }, { u"Nice"_s, 1, 1 }, { u"slow"_s, 0, 0 }, { u""_s, 0, 0 },
        { u"GRÖßE"_s, 2, 0 }, { u"Größe"_s, 2, 2 } };
    for (auto const &row : names) {
        EXPECT_EQ(item.index(row.name), row.index) << row.name;
        EXPECT_EQ(item.indexDisplay(row.name), row.indexDisplay) << row.name;
    }
    struct {
        int index;
        QString name, display;
    } const choices[] = { { 1, u"nice"_s, u"Nice"_s }, { 2, u"größe"_s, u"Größe"_s }, { -1, {}, {} }, { 3, {}, {} } };
    for (auto const &row : choices) {
        EXPECT_TRUE(item.setValue(row.index));
        EXPECT_EQ(item.valueAsString(), row.name) << row.index;
        EXPECT_EQ(item.valueAsDisplayString(), row.display) << row.index;
        EXPECT_EQ(item.defaultValueAsDisplayString(), u"Fast"_s);
    }
    EXPECT_TRUE(item.loadXml(element("value='slow'"))); // a choice that is gone becomes the first
    EXPECT_EQ(saved(item), u"speed id=KEY value=fast"_s);
}

TEST_F(ChoiceItemTest, WithoutChoicesAnIndexIsANumber)
{
    PR_EnumItem item(General, u"KEY"_s, "enum");
    EXPECT_TRUE(item.setValue(7));
    EXPECT_EQ(saved(item), u"enum id=KEY value=7"_s);
    EXPECT_EQ(item.valueAsDisplayString(), u"7"_s);
    EXPECT_EQ(item.index(u"7"_s), 0);
    PR_EnumItem odd(PR_PrefItem::Internal, u"KEY"_s, u"no name"_s);
    EXPECT_EQ(saved(odd), u"string id=KEY value=0"_s); // the file must stay XML
}

TEST_F(ChoiceItemTest, FontsAreChosenByName)
{
    host.fonts = QStringList{ u"Arial"_s, u"ÉTUDE"_s, u"Times"_s, u"times"_s };
    struct {
        QString wanted;
        unsigned int defaultId;
        int index;
        QString fontName;
    } const table[] = { { u"étude"_s, 2, 1, u"ÉTUDE"_s }, { u"times"_s, 0, 2, u"Times"_s },
        { u" Arial"_s, 2, 2, u"Times"_s }, { u""_s, 0, 0, u"Arial"_s }, { u"Helvetica"_s, 9, 9, u""_s } };
    for (auto const &row : table) {
        host.defaultFontId = row.defaultId;
        PR_FontItem item(General, u"KEY"_s, row.wanted);
        EXPECT_EQ(item.defaultValue(), row.index) << row.wanted;
        EXPECT_EQ(item.fontName(), row.fontName) << row.wanted;
        EXPECT_EQ(saved(item, true), u"font id=KEY value="_s + row.fontName.toLower()) << row.wanted;
    }
    PR_FontItem item(General, u"KEY"_s, u"Times"_s);
    host.fonts = QStringList();
    host.defaultFontId = 1;
    EXPECT_TRUE(item.loadXml(element("value='Helvetica'")));
    EXPECT_EQ(item.fontName(), u"Arial"_s); // the choices were fixed when the item was built
    PR_FontItem none(General, u"KEY"_s, u"Arial"_s);
    EXPECT_EQ(none.value(), 1);
    EXPECT_EQ(none.fontName(), QString());
}

TEST_F(ChoiceItemTest, EachFontItemHasNamesOfItsOwn)
{
    auto source = std::make_unique<PR_FontItem>(General, u"KEY"_s, u"Times"_s);
    host.fonts = QStringList{ u"Other"_s };
    PR_FontItem copied(General, u"COPIED"_s, u"Other"_s);
    PR_FontItem assigned(General, u"ASSIGNED"_s, u"Other"_s);
    PR_FontItem constructed(*source);
    std::unique_ptr<PR_PrefItem> const clone(source->clone());
    copied.copy(source.get());
    assigned = *source;
    copied.copy(&copied);
    assigned = *&assigned;
    source.reset();
    for (PR_PrefItem *item : { static_cast<PR_PrefItem *>(&copied), static_cast<PR_PrefItem *>(&assigned),
             static_cast<PR_PrefItem *>(&constructed), clone.get() }) {
        auto *const font = dynamic_cast<PR_FontItem *>(item);
        ASSERT_TRUE(font);
        EXPECT_EQ(font->fontName(), u"Times"_s);
        EXPECT_EQ(font->index(u"COURIER"_s), 1);
    }
}
