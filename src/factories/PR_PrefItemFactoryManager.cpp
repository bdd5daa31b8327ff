#include "PR_PrefItemFactoryManager.h"

#include "PR_ItemTypes_p.h"

namespace {
int registerFactories()
{
    PR_ItemTypes::any([](auto const &row, int) {
        if (row.hasFactory) {
            // The registry refers to it but is never destroyed, so it never deletes it.
            static PR_ConcretePrefItemFactory<typename std::decay_t<decltype(row)>::Item> factory(
                QString::fromLatin1(row.tag));
            factory.registerClass();
        }
        return false;
    });
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
