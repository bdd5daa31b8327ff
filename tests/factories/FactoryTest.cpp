#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_FontItem.h"
#include "PR_IntItem.h"
#include "PR_PrefItemFactoryManager.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"
#include "TestSupport.h"

using namespace Qt::StringLiterals;

namespace {
using FactoryTest = HostTest;
using Registry = PR_PrefItemFactoryManager;

template <class Item> bool isA(PR_PrefItem *item)
{
    return dynamic_cast<Item *>(item);
}

struct TestFactory : PR_ConcretePrefItemFactory<PR_BoolItem> {
    TestFactory(QString const &key, int &deleted)
        : PR_ConcretePrefItemFactory(key)
        , deleted(deleted)
    {
    }
    ~TestFactory() override { ++deleted; }
    int &deleted;
};
} // namespace

TEST_F(FactoryTest, TheLibrarysFactoriesBuildTheirItems)
{
    struct {
        QString name;
        char const *attributes;
        QString value;
        bool (*isRight)(PR_PrefItem *);
    } const table[] = { { u"bool"_s, "value='true'", u"Yes"_s, isA<PR_BoolItem> },
        { u"int"_s, "value='-3'", u"-3"_s, isA<PR_IntItem> },
        { u"double"_s, "value='0.5'", u"0.500000"_s, isA<PR_DoubleItem> },
        { u"color"_s, "red='1' green='2' blue='3'", u"(  1   2   3 255)"_s, isA<PR_RgbaItem> },
        { u"string"_s, "value='text'", u"text"_s, isA<PR_StringItem> },
        { u"font"_s, "value='times'", u"times"_s, isA<PR_FontItem> } };
    Registry *const registry = Registry::getInstance();
    for (auto const &row : table) {
        SCOPED_TRACE(row.name.toStdString());
        auto const found = registry->factory(row.name);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->key(), row.name);
        EXPECT_EQ(found->refCount(), 2);
        EXPECT_EQ(Registry(*registry).factory(row.name).get(), found.get());
        EXPECT_EQ(found->refCount(), 2);

        QDomElement const definition = xmlElement("<x id='OTHER' " + QByteArray(row.attributes) + "/>");
        std::unique_ptr<PR_PrefItem> const item(found->create(PR_PrefItem::Timeline, u"KEY"_s, definition));
        EXPECT_TRUE(row.isRight(item.get()));
        EXPECT_EQ(item->getKey(), u"KEY"_s);
        EXPECT_EQ(item->getTag(), row.name);
        EXPECT_EQ(item->getCategory(), PR_PrefItem::Timeline);
        EXPECT_EQ(item->valueAsString(), row.value);
    }
    for (QString const &name : { u"shortcut"_s, u"enum"_s, u"Bool"_s, u"boo"_s, u"boolx"_s, u""_s })
        EXPECT_FALSE(registry->factory(name)) << name;
}

TEST_F(FactoryTest, AFactoryGoesWhenItIsReplacedAndNoLongerHeld)
{
    QString const name = u"test_replaced"_s;
    int deleted = 0;
    auto *const first = new TestFactory(name, deleted);
    first->registerClass();
    first->registerClass();
    EXPECT_EQ(first->refCount(), 1);
    EXPECT_EQ(TestFactory(*first).refCount(), 0);
    EXPECT_EQ(TestFactory(*first).key(), name);
    deleted = 0;

    auto held = Registry::getInstance()->factory(name);
    static int secondDeleted = 0; // the registry holds the second until the program ends
    auto *const second = new TestFactory(name, secondDeleted);
    second->registerClass();
    EXPECT_EQ(Registry::getInstance()->factory(name).get(), second);
    EXPECT_EQ(held.get(), first);
    EXPECT_EQ(deleted, 0);
    held = {};
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(secondDeleted, 0);
}
