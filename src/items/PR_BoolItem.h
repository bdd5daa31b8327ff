#ifndef PR_BOOLITEM_H
#define PR_BOOLITEM_H

#include "PR_TypedItem.h"

class BRIVANT_PREFERENCE_EXPORT PR_BoolItem; // exported here already: the template takes its visibility from it
extern template class PR_TypedItem<PR_BoolItem, bool>;

/*! An on/off preference. Files of the user hold "Y" or "N", definitions "true" or anything else. */
class BRIVANT_PREFERENCE_EXPORT PR_BoolItem : public PR_TypedItem<PR_BoolItem, bool> {
public:
    /*! \a value is both default and current value. */
    PR_BoolItem(Category category, QString const &key, bool value);
    /*! From a definition: "value". */
    PR_BoolItem(Category category, QString const &key, QDomElement const &definition);

    /*! The element that saveXml() appends, apart from a document. */
    PR_ItemElement element() const;

    /*! Makes \a value the user's value; true only when it changed. A locked item reports and refuses. */
    bool setValue(bool value) { return changeValue(value); }

private:
    friend class PR_TypedItem<PR_BoolItem, bool>;

    bool readElement(PR_ItemElement const &element, bool &value) const;
    bool readToken(TULex &lex, bool &value) const;
    QString asString(bool value) const;
};

#endif
