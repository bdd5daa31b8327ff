#ifndef PR_INT64ITEM_H
#define PR_INT64ITEM_H

#include "PR_TypedItem.h"

/*! An integer of 64 bits. */
class BRIVANT_PREFERENCE_EXPORT PR_Int64Item : public PR_TypedItem<PR_Int64Item, qint64> {
public:
    PR_Int64Item(Category category, QString const &key, qint64 value);
    PR_Int64Item(Category category, QString const &key, QDomElement const &definition);
    ~PR_Int64Item() override;

    bool setValue(qint64 value) { return changeValue(value); }

private:
    friend class PR_TypedItem<PR_Int64Item, qint64>;
    friend struct PR_ItemTypes;

    PR_Int64Item(Category category, QString const &key, PR_Element const &definition);
    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, qint64 &value) const;
    bool readToken(TULex &lex, qint64 &value) const;
    QString asString(qint64 value) const;
};

#endif
