#include "PR_Int64Item.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_Int64Item, qint64>;

PR_Int64Item::PR_Int64Item(Category category, QString const &key, qint64 value)
    : PR_TypedItem(category, key, QStringLiteral("int64"), value)
{
}

PR_Int64Item::PR_Int64Item(Category category, QString const &key, QDomElement const &definition)
    : PR_Int64Item(category, key, *PR_ElementDom::treeOf(definition).root())
{
}

PR_Int64Item::PR_Int64Item(Category category, QString const &key, PR_Element const &definition)
    : PR_Int64Item(category, key, definition.attribute(u"value").toLongLong())
{
}

PR_Int64Item::~PR_Int64Item() = default;

bool PR_Int64Item::readElement(PR_Element const &element, qint64 &value) const
{
    bool ok = false;
    value = element.value().toLongLong(&ok);
    return ok;
}

bool PR_Int64Item::readToken(TULex &lex, qint64 &value) const
{
    bool ok = false;
    value = QString(lex).toLongLong(&ok);
    if (ok)
        lex.get(false);
    return ok;
}

void PR_Int64Item::write(PR_XmlTree &tree, PR_Element *parent) const
{
    tree.addItem(parent, getTag(), getKey(), QString::number(m_value));
}

QString PR_Int64Item::asString(qint64 value) const
{
    return QString::number(value);
}
