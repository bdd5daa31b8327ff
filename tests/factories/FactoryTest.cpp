#include "PR_BoolItem.h"
#include "PR_PrefItemFactoryManager.h"
#include "TestSupport.h"

using namespace Qt::StringLiterals;

namespace {
using FactoryTest = HostTest;
using Registry = PR_PrefItemFactoryManager;

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

TEST_F(FactoryTest, TheLibrarysFactoriesAreShared)
{
    Registry *const registry = Registry::getInstance();
    for (QString const &name : { u"bool"_s, u"int"_s, u"double"_s, u"color"_s, u"string"_s, u"font"_s }) {
        SCOPED_TRACE(name.toStdString());
        auto const found = registry->factory(name);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->key(), name);
        EXPECT_EQ(Registry(*registry).factory(name).get(), found.get());
        EXPECT_EQ(found->refCount(), 2);
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
