#ifndef PR_TYPEDITEM_P_H
#define PR_TYPEDITEM_P_H

#include "PR_ElementDom_p.h"
#include "PR_PrefConstants.h"
#include "PR_TypedItem.h"
#include "TULex.h"

// Each item class includes this in its source and instantiates PR_TypedItem there. It says only what is particular to
// it:
// - a private constructor from a light element of a definition.
// - bool readElement(PR_Element const &, Value &) const: the value of a user's element; false when it is none.
// - bool readToken(TULex &, Value &) const: the value at the current token, and past it; false when it is none.
// - void write(PR_XmlTree &, PR_Element *parent) const: adds the element of the current value.
// - QString asString(Value) const: the text to show.

template <class Item, class Value>
PR_TypedItem<Item, Value>::PR_TypedItem(Category category, QString const &key, QString const &tag, Value const &value)
    : PR_PrefItem(category, key, tag)
    , m_default(value)
    , m_value(value)
{
}

template <class Item, class Value> PR_TypedItem<Item, Value>::~PR_TypedItem() = default;

template <class Item, class Value> bool PR_TypedItem<Item, Value>::loadXml(QDomElement const &element)
{
    return loadElement(*PR_ElementDom::treeOf(element).root());
}

template <class Item, class Value> bool PR_TypedItem<Item, Value>::loadElement(PR_Element const &element)
{
    Value value{};
    if (element.id().isEmpty() || element.id() != getKey() || !item().readElement(element, value))
        return false;
    takeUserValue(value);
    return true;
}

template <class Item, class Value> bool PR_TypedItem<Item, Value>::load(TULex &lex)
{
    if (!(lex == getKey()))
        return false;
    lex.get(false);
    Value value{};
    if (!item().readToken(lex, value))
        return false;
    takeUserValue(value);
    return true;
}

template <class Item, class Value> void PR_TypedItem<Item, Value>::takeUserValue(Value const &value)
{
    if (hasFacilityOverride(false))
        return;
    m_value = value;
    setOrigin(OriginUser);
}

template <class Item, class Value> bool PR_TypedItem<Item, Value>::changeValue(Value const &value)
{
    if (hasFacilityOverride(true) || value == m_value)
        return false;
    m_value = value;
    setOrigin(OriginUser);
    return true;
}

template <class Item, class Value> void PR_TypedItem<Item, Value>::saveXml(QDomDocument *document, bool force)
{
    if (!force && getOrigin() != OriginUser)
        return;
    PR_XmlTree tree;
    item().write(tree, nullptr);
    PR_ElementDom::append(*document, document->documentElement(), *tree.root());
}

template <class Item, class Value> void PR_TypedItem<Item, Value>::defaultInUser()
{
    m_value = m_default;
}

template <class Item, class Value> PR_PrefItem *PR_TypedItem<Item, Value>::clone()
{
    return new Item(item());
}

template <class Item, class Value> void PR_TypedItem<Item, Value>::copy(PR_PrefItem *other)
{
    PR_PrefItem::copy(other);
    auto const *typed = static_cast<PR_TypedItem *>(other);
    setOrigin(typed->getOrigin());
    m_default = typed->m_default;
    m_value = typed->m_value;
}

template <class Item, class Value> PR_PrefItem::Type PR_TypedItem<Item, Value>::getType() const
{
    return Other;
}

template <class Item, class Value> QString PR_TypedItem<Item, Value>::valueAsString() const
{
    return item().asString(m_value);
}

template <class Item, class Value> QString PR_TypedItem<Item, Value>::defaultValueAsString() const
{
    return item().asString(m_default);
}

#endif
