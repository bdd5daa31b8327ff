#include "PR_PrefItemFactory.h"

#include "PR_PrefItemFactoryManager.h"

PR_AbstractPrefItemFactory::PR_AbstractPrefItemFactory(QString const &key)
    : m_key(key)
{
}

PR_AbstractPrefItemFactory::~PR_AbstractPrefItemFactory() = default;

void PR_AbstractPrefItemFactory::registerClass()
{
    PR_PrefItemFactoryManager::getInstance()->addFactory(this);
}

PR_ConcretePrefItemFactoryWrapper::PR_ConcretePrefItemFactoryWrapper(int)
{
}

PR_ConcretePrefItemFactoryWrapper &PR_ConcretePrefItemFactoryWrapper::operator=(
    PR_ConcretePrefItemFactoryWrapper const &) = default;
