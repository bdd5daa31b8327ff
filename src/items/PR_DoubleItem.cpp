#include "PR_DoubleItem.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_DoubleItem, double>;

PR_DoubleItem::PR_DoubleItem(Category category, QString const &key, double value)
    : PR_TypedItem(category, key, QStringLiteral("double"), value)
{
}

PR_DoubleItem::PR_DoubleItem(Category category, QString const &key, QDomElement const &definition)
    : PR_DoubleItem(category, key, *PR_ElementDom::treeOf(definition).root())
{
}

PR_DoubleItem::PR_DoubleItem(Category category, QString const &key, PR_Element const &definition)
    : PR_DoubleItem(category, key, definition.attribute(u"value").toDouble())
{
    m_percentage = definition.attribute(u"percentage") == u"true";
}

PR_DoubleItem::~PR_DoubleItem() = default;

void PR_DoubleItem::copy(PR_PrefItem *other)
{
    PR_TypedItem::copy(other);
    m_percentage = static_cast<PR_DoubleItem *>(other)->m_percentage;
}

bool PR_DoubleItem::readElement(PR_Element const &element, double &value) const
{
    bool ok = false;
    value = element.value().toDouble(&ok);
    return ok;
}

bool PR_DoubleItem::readToken(TULex &lex, double &value) const
{
    return lex.get_double(value);
}

void PR_DoubleItem::write(PR_XmlTree &tree, PR_Element *parent) const
{
    tree.addItem(parent, getTag(), getKey(), QString::number(m_value, 'g', 6));
}

QString PR_DoubleItem::asString(double value) const
{
    return QString::number(value, 'f', 6);
}
