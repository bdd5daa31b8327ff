#ifndef PR_TYPEDITEM_H
#define PR_TYPEDITEM_H

#include "PR_PrefItem.h"

class PR_XmlTree;
struct PR_Element;

/*! What the library's own items share: the rules for setting, loading, saving and copying a value of the type \a Value.

    It is a base of the library's item classes alone. An item class of a host derives from one of these or from
    PR_PrefItem. */
template <class Item, class Value> class BRIVANT_PREFERENCE_EXPORT PR_TypedItem : public PR_PrefItem {
public:
    /*! \name The operations of PR_PrefItem */
    /*!\{*/
    bool loadXml(QDomElement const &element) override; /*!< \copydoc PR_PrefItem::loadXml */
    bool load(TULex &lex) override; /*!< \copydoc PR_PrefItem::load */
    void saveXml(QDomDocument *document, bool force) override; /*!< \copydoc PR_PrefItem::saveXml */
    void defaultInUser() override; /*!< \copydoc PR_PrefItem::defaultInUser */
    ~PR_TypedItem() override; /*!< Ends the references to its values. */
    PR_PrefItem *clone() override; /*!< \copydoc PR_PrefItem::clone */
    void copy(PR_PrefItem *other) override; /*!< \copydoc PR_PrefItem::copy */
    Type getType() const override; /*!< \copydoc PR_PrefItem::getType */
    QString valueAsString() const override; /*!< \copydoc PR_PrefItem::valueAsString */
    QString defaultValueAsString() const override; /*!< \copydoc PR_PrefItem::defaultValueAsString */
    /*!\}*/

    /*! Valid until the item is deleted; shows every later change. */
    [[nodiscard]] Value const &value() const { return m_value; }
    /*! Valid until the item is deleted. */
    [[nodiscard]] Value const &defaultValue() const { return m_default; }

protected:
    /*! \a value is both default and current value. */
    PR_TypedItem(Category category, QString const &key, QString const &tag, Value const &value);
    /*! \name Copies */
    /*!\{*/
    /*! All of an item, its key too. */
    PR_TypedItem(PR_TypedItem const &) = default;
    PR_TypedItem &operator=(PR_TypedItem const &) = default; /*!< The same. */
    /*!\}*/

    /*! Makes \a value the user's value; true only when it changed. A locked item reports and refuses. */
    bool changeValue(Value const &value);

    Value m_default; /*!< The value that restoreDefault() brings back. */
    Value m_value; /*!< The current value. */

private:
    friend struct PR_ItemTypes;

    bool loadElement(PR_Element const &element);
    void takeUserValue(Value const &value);
    Item &item() { return static_cast<Item &>(*this); }
    Item const &item() const { return static_cast<Item const &>(*this); }
};

#endif
