#ifndef PR_ELEMENTDOM_P_H
#define PR_ELEMENTDOM_P_H

#include "PR_XmlTree_p.h"

#include <QDomDocument>

/*! Light elements as elements of a document and the other way round: for the item classes and factories of hosts, whose
    interface knows documents alone. */
namespace PR_ElementDom {
/*! A document without a node. */
QDomDocument newDocument();

/*! An element in a document of its own, below elements like those that it stands in. */
struct Placed {
    QDomDocument document; /*!< Owns the element. */
    QDomElement element;
};
Placed toDom(PR_Element const &element);

/*! Appends a copy of an element to a node of \a document, with all in it that no condition excludes; gives the copy. */
QDomElement append(QDomDocument &document, QDomNode parent, PR_Element const &element);

/*! Adds an element of a document, with all that it contains, to a light tree; without a parent it becomes the root.
   "id" comes first of its attributes, the others follow by name: a document has them in an order of its own. */
PR_Element *add(PR_XmlTree &tree, PR_Element *parent, QDomElement const &dom);
/*! A light tree of an element of a document. */
PR_XmlTree treeOf(QDomElement const &dom);
} // namespace PR_ElementDom

#endif
