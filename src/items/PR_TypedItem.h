#ifndef PR_TYPEDITEM_H
#define PR_TYPEDITEM_H

#include "PR_PrefItem.h"

struct PR_ItemElement;

/*! The rules that all items share for setting, loading, saving and copying a value of the type \a Value.

    \a Item, the class derived from this one, says only what is particular to it; it has these members and makes this
    class its friend:
    - bool readElement(PR_ItemElement const &, Value &): the value of a user's element; false when it is none.
    - bool readToken(TULex &, Value &): the value at the current token, and past it; false when it is none.
    - PR_ItemElement element() const: the element of the current value.
    - QString asString(Value) const: the text to show. */
template <class Item, class Value> class BRIVANT_PREFERENCE_EXPORT PR_TypedItem : public PR_PrefItem {
public:
    bool loadXml(QDomElement const &element) override;
    bool load(TULex &lex) override;
    void saveXml(QDomDocument *document, bool force) override;
    void defaultInUser() override;
    ~PR_TypedItem() override;
    PR_PrefItem *clone() override;
    void copy(PR_PrefItem *other) override;
    Type getType() const override;
    QString valueAsString() const override;
    QString defaultValueAsString() const override;

    /*! loadXml() for an element apart from a document. */
    bool loadElement(PR_ItemElement const &element);
    /*! Whether saveXml() writes the item. */
    bool isSaved(bool force) const { return force || getOrigin() == OriginUser; }

    /*! Valid until the item is deleted; shows every later change. */
    Value const &value() const { return m_value; }
    Value const &defaultValue() const { return m_default; }

protected:
    PR_TypedItem(Category category, QString const &key, QString const &tag, Value const &value);
    PR_TypedItem(PR_TypedItem const &) = default;
    PR_TypedItem &operator=(PR_TypedItem const &) = default;

    /*! Makes \a value the user's value; true only when it changed. A locked item reports and refuses. */
    bool changeValue(Value const &value);

    Value m_default;
    Value m_value;

private:
    void takeUserValue(Value const &value);
    Item &item() { return static_cast<Item &>(*this); }
    Item const &item() const { return static_cast<Item const &>(*this); }
};

#endif
