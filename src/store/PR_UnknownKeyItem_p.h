#ifndef PR_UNKNOWNKEYITEM_P_H
#define PR_UNKNOWNKEYITEM_P_H

#include <memory>

class PR_PrefItem;
class QString;

/*! Items for keys of a user's file that have no definition. */
namespace PR_UnknownKeyItem {
/*! An item for an element of the name \a type; null for types that are kept as texts. */
std::unique_ptr<PR_PrefItem> create(QString const &type, QString const &key);
} // namespace PR_UnknownKeyItem

#endif
