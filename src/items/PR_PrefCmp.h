#ifndef PR_PREFCMP_H
#define PR_PREFCMP_H

#include "brivantpreference_export.h"

class PR_PrefItem;
class QString;

/*! Order of items by key: UTF-16 code units, case-sensitive. */
class BRIVANT_PREFERENCE_EXPORT PR_PrefCmp {
public:
    /*! Whether the key of \a a comes before that of \a b. */
    bool operator()(PR_PrefItem const *a, PR_PrefItem const *b) const;
    /*! True when the item's key begins with \a prefix, case-sensitively. */
    [[nodiscard]] bool startsWith(PR_PrefItem const *item, QString const &prefix) const;
};

#endif
