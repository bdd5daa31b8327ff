#ifndef PR_PREFUTIL_H
#define PR_PREFUTIL_H

#include "brivantpreference_export.h"

class QDomDocument;
class QDomElement;
class QString;

/*! Writing and reading of one item element. */
namespace PR_PrefUtil {
/*! Appends an element \a tag for the item \a id to the root of \a document, which must have one. The value goes into
    the attribute "value", with \a cdata into a CDATA child marked by the attribute "cdata". All texts are taken as they
    are; what XML cannot hold is dropped where a store writes its file. */
BRIVANT_PREFERENCE_EXPORT void addElement(
    QDomDocument *document, QString const &tag, QString const &id, QString const &value, bool cdata);

/*! Reads "id" and the value of either form; false when there is no id. */
BRIVANT_PREFERENCE_EXPORT bool attributes(QDomElement const &element, QString *id, QString *value);
} // namespace PR_PrefUtil

#endif
