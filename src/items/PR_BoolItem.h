#ifndef PR_BOOLITEM_H
#define PR_BOOLITEM_H

#include "PR_TypedItem.h"

/*! An on/off preference. Files of the user hold "Y" or "N", definitions "true" or anything else. */
class BRIVANT_PREFERENCE_EXPORT PR_BoolItem : public PR_TypedItem<PR_BoolItem, bool> {
public:
    /*! \a value is both default and current value. */
    PR_BoolItem(Category category, QString const &key, bool value);
    /*! A text is no bool: any pointer would count as true. */
    template <class T> PR_BoolItem(Category category, QString const &key, T const *value) = delete;
    /*! From a definition: "value". */
    PR_BoolItem(Category category, QString const &key, QDomElement const &definition);
    ~PR_BoolItem() override;

    /*! Makes \a value the user's value; true only when it changed. A locked item reports and refuses. */
    bool setValue(bool value) { return changeValue(value); }

private:
    friend class PR_TypedItem<PR_BoolItem, bool>;
    friend struct PR_ItemTypes;

    PR_BoolItem(Category category, QString const &key, PR_Element const &definition);
    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, bool &value) const;
    bool readToken(TULex &lex, bool &value) const;
    QString asString(bool value) const;
};

#endif
