#include "PR_BoolItem.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_BoolItem, bool>;

PR_BoolItem::PR_BoolItem(Category category, QString const &key, bool value)
    : PR_TypedItem(category, key, QStringLiteral("bool"), value)
{
}

PR_BoolItem::PR_BoolItem(Category category, QString const &key, QDomElement const &definition)
    : PR_BoolItem(category, key, definition.attribute(kValue) == QLatin1String("true"))
{
}

PR_BoolItem::~PR_BoolItem() = default;

bool PR_BoolItem::readElement(PR_ItemElement const &element, bool &value) const
{
    value = element.value() == QLatin1String("Y");
    return true;
}

bool PR_BoolItem::readToken(TULex &lex, bool &value) const
{
    return lex.get_bool(value);
}

PR_ItemElement PR_BoolItem::element() const
{
    return PR_ItemElement::of(getTag(), getKey(), m_value ? QStringLiteral("Y") : QStringLiteral("N"));
}

QString PR_BoolItem::asString(bool value) const
{
    return value ? QStringLiteral("Yes") : QStringLiteral("No");
}
