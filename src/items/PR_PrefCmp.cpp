#include "PR_PrefCmp.h"

#include "PR_PrefItem.h"

bool PR_PrefCmp::operator()(PR_PrefItem const *a, PR_PrefItem const *b) const
{
    return a->getKey() < b->getKey();
}

bool PR_PrefCmp::startsWith(PR_PrefItem const *item, QString const &prefix) const
{
    return prefix.isEmpty() || item->getKey().startsWith(prefix); // a null key begins with no text
}
