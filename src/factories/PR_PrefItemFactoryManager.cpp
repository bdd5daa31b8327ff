#include "PR_PrefItemFactoryManager.h"

#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_FontItem.h"
#include "PR_IntItem.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"

#include <initializer_list>

namespace {
// The factories of the library. The registry refers to them but is never destroyed, so it never deletes one.
PR_ConcretePrefItemFactory<PR_BoolItem> boolFactory(QStringLiteral("bool"));
PR_ConcretePrefItemFactory<PR_IntItem> intFactory(QStringLiteral("int"));
PR_ConcretePrefItemFactory<PR_DoubleItem> doubleFactory(QStringLiteral("double"));
PR_ConcretePrefItemFactory<PR_RgbaItem> colorFactory(QStringLiteral("color"));
PR_ConcretePrefItemFactory<PR_StringItem> stringFactory(QStringLiteral("string"));
PR_ConcretePrefItemFactory<PR_FontItem> fontFactory(QStringLiteral("font"));

int registerFactories()
{
    for (PR_AbstractPrefItemFactory *factory : std::initializer_list<PR_AbstractPrefItemFactory *>{
             &boolFactory, &intFactory, &doubleFactory, &colorFactory, &stringFactory, &fontFactory })
        factory->registerClass();
    return 0;
}

PR_ConcretePrefItemFactoryWrapper const registration(registerFactories());
} // namespace

PR_PrefItemFactoryManager *PR_PrefItemFactoryManager::getInstance()
{
    static auto *const instance = new PR_PrefItemFactoryManager;
    return instance;
}

PR_PrefItemFactoryManager::PR_PrefItemFactoryManager() = default;
PR_PrefItemFactoryManager::PR_PrefItemFactoryManager(PR_PrefItemFactoryManager const &) = default;
PR_PrefItemFactoryManager &PR_PrefItemFactoryManager::operator=(PR_PrefItemFactoryManager const &) = default;
PR_PrefItemFactoryManager::~PR_PrefItemFactoryManager() = default;

UT_SharedPtr<PR_AbstractPrefItemFactory> PR_PrefItemFactoryManager::factory(QString const &name)
{
    auto const found = m_factories.find(name);
    return found == m_factories.end() ? UT_SharedPtr<PR_AbstractPrefItemFactory>() : found->second;
}

void PR_PrefItemFactoryManager::addFactory(PR_AbstractPrefItemFactory *factory)
{
    m_factories[factory->key()] = UT_SharedPtr<PR_AbstractPrefItemFactory>(factory);
}
