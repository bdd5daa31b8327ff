#ifndef PR_PREFUTIL_P_H
#define PR_PREFUTIL_P_H

#include <QString>

class QDomDocument;
class QDomElement;

namespace PR_PrefUtil {
/*! The text without the characters that XML cannot hold: control characters, lone surrogates, U+FFFE and U+FFFF. */
QString xmlText(QString const &text);

/*! The value of an item element: its attribute "value", or its CDATA child in the "cdata" form. */
QString elementValue(QDomElement const &element);

/*! An element of the name \a tag for the item \a id, the last child of the root of \a document. A tag that is no ASCII
    name gives an element "string": the value comes back under its key whatever the element's name. */
QDomElement appendElement(QDomDocument *document, QString const &tag, QString const &id);
} // namespace PR_PrefUtil

#endif
