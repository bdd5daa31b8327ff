#ifndef AC_XML_H
#define AC_XML_H

#include "brivantbase_export.h"

#include <QStringList>

class QDomElement;
struct PR_Element;

/*! Conditional XML. */
class BRIVANT_BASE_EXPORT AC_XML {
public:
    /*! Removes from the tree below \a root each element whose attribute "feature" does not hold: a keyword that is
        not in \a keywords, or "not " and one that is. Where it does not hold for \a root, all children go. True
        when something was removed; the last argument is not used. */
    static bool trimConditions(QDomElement &root, QStringList const &keywords, bool verbose);
    /*! The same for the library's own trees, in which such an element is marked as excluded. */
    static bool trimConditions(PR_Element &root, QStringList const &keywords, bool verbose);
};

#endif
