#include "ItemTest.h"
#include "PR_FontItem.h"

#include <cstdlib>
#include <functional>
#include <new>

using namespace Qt::StringLiterals;

namespace {
int allocationsLeft = -1; // of arrays, until they fail; never while it is negative
}

void *operator new[](std::size_t size)
{
    void *const memory = allocationsLeft == 0 ? nullptr : std::malloc(size);
    allocationsLeft -= allocationsLeft > 0;
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void operator delete[](void *memory) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {
using ChoiceItemTest = HostTest;
constexpr auto General = PR_PrefItem::General;
} // namespace

TEST_F(ChoiceItemTest, NamesAndIndices)
{
    TestEnumItem item(General, u"KEY"_s, element("value='speed'"));
    struct {
        QString name;
        int choice, displayChoice; // -1: none, which index() gives as 0
    } const names[] = { { u"NICE"_s, 1, -1 }, { u"Nice"_s, 1, 1 }, { u"slow"_s, -1, -1 }, { u""_s, -1, -1 },
        { u"GRÖßE"_s, 2, -1 }, { u"Größe"_s, 2, 2 }, { u"FAST"_s, 0, -1 } };
    for (auto const &row : names) {
        EXPECT_EQ(item.findChoice(row.name), row.choice) << row.name;
        EXPECT_EQ(item.findDisplayChoice(row.name), row.displayChoice) << row.name;
        EXPECT_EQ(item.index(row.name), qMax(0, row.choice)) << row.name;
        EXPECT_EQ(item.indexDisplay(row.name), qMax(0, row.displayChoice)) << row.name;
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
    EXPECT_TRUE(item.loadXml(element("value='fast'")));
    EXPECT_EQ(saved(item), u"enum id=KEY value=0"_s) << "the name that was read is not kept";
    PR_EnumItem odd(PR_PrefItem::Internal, u"KEY"_s, u"no name"_s);
    EXPECT_EQ(saved(odd), u"no name id=KEY value=0"_s);
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
    PR_FontItem assignedAsEnum(General, u"ASSIGNED"_s, u"Other"_s);
    PR_FontItem constructed(*source);
    std::unique_ptr<PR_PrefItem> const clone(source->clone());
    copied.copy(source.get());
    assigned = *source;
    static_cast<PR_EnumItem &>(assignedAsEnum) = *source;
    copied.copy(&copied);
    assigned = *&assigned;
    source.reset();
    for (PR_PrefItem *item : { static_cast<PR_PrefItem *>(&copied), static_cast<PR_PrefItem *>(&assigned),
             static_cast<PR_PrefItem *>(&assignedAsEnum), static_cast<PR_PrefItem *>(&constructed), clone.get() }) {
        auto *const font = dynamic_cast<PR_FontItem *>(item);
        ASSERT_TRUE(font);
        EXPECT_EQ(font->fontName(), u"Times"_s);
        EXPECT_EQ(font->index(u"COURIER"_s), 1);
    }
}

TEST_F(ChoiceItemTest, AHostMayCopyByAssignment)
{
    struct HostItem : PR_EnumItem {
        using PR_EnumItem::PR_EnumItem;
        void copy(PR_PrefItem *other) override { *this = static_cast<HostItem &>(*other); }
    } item(General, u"KEY"_s, "host"), source(General, u"KEY"_s, "host");
    source.setValue(4);
    item.copy(&source);
    EXPECT_EQ(item.value(), 4);
}

TEST_F(ChoiceItemTest, AFontItemSurvivesEachAllocationThatFails)
{
    PR_FontItem const source(General, u"KEY"_s, u"Times"_s);
    host.fonts = QStringList{ u"Other"_s };
    PR_FontItem copied(General, u"COPIED"_s, u"Other"_s);
    std::pair<char const *, std::function<void()>> const operations[] = {
        { "copy", [&] { copied.copy(const_cast<PR_FontItem *>(&source)); } },
        { "assignment", [&] { copied = PR_FontItem(source); } },
        { "construction", [] { PR_FontItem(General, u"KEY"_s, u"Other"_s); } },
    };
    for (auto const &[name, operation] : operations) {
        int failures = 0;
        for (bool isDone = false; !isDone; ++failures) {
            QString const before = copied.fontName();
            allocationsLeft = failures;
            try {
                operation();
                isDone = true;
            } catch (std::bad_alloc const &) {
                EXPECT_EQ(copied.fontName(), before) << name;
                EXPECT_EQ(copied.index(before), copied.value()) << name;
            }
            allocationsLeft = -1;
        }
        EXPECT_GT(failures, 2) << name;
    }
}
