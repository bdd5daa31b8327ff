#include "PR_BoolItem.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_BoolItem, bool>;

PR_BoolItem::PR_BoolItem(Category category, QString const &key, bool value)
    : PR_TypedItem(category, key, QStringLiteral("bool"), value)
{
}

PR_BoolItem::PR_BoolItem(Category category, QString const &key, QDomElement const &definition)
    : PR_BoolItem(category, key, *PR_ElementDom::treeOf(definition).root())
{
}

PR_BoolItem::PR_BoolItem(Category category, QString const &key, PR_Element const &definition)
    : PR_BoolItem(category, key, definition.attribute(u"value") == u"true")
{
}

PR_BoolItem::~PR_BoolItem() = default;

bool PR_BoolItem::readElement(PR_Element const &element, bool &value) const
{
    value = element.value() == u"Y";
    return true;
}

bool PR_BoolItem::readToken(TULex &lex, bool &value) const
{
    return lex.get_bool(value);
}

void PR_BoolItem::write(PR_XmlTree &tree, PR_Element *parent) const
{
    tree.addItem(parent, getTag(), getKey(), m_value ? u"Y" : u"N");
}

QString PR_BoolItem::asString(bool value) const
{
    return value ? QStringLiteral("Yes") : QStringLiteral("No");
}
