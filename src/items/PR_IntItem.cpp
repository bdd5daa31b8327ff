#include "PR_IntItem.h"
#include "PR_TypedItem_p.h"

#include <limits>

template class PR_TypedItem<PR_IntItem, int>;

namespace {
int rangeEnd(QDomElement const &definition, QString const &attribute, int undeclared)
{
    return definition.hasAttribute(attribute) ? definition.attribute(attribute).toInt() : undeclared;
}
} // namespace

PR_IntItem::PR_IntItem(Category category, QString const &key, int value, int minimum, int maximum)
    : PR_TypedItem(category, key, QStringLiteral("int"), value)
    , m_minimum(minimum)
    , m_maximum(maximum)
{
}

PR_IntItem::PR_IntItem(Category category, QString const &key, QDomElement const &definition)
    : PR_IntItem(category, key, definition.attribute(kValue).toInt(),
        rangeEnd(definition, QStringLiteral("min"), std::numeric_limits<int>::min()),
        rangeEnd(definition, QStringLiteral("max"), std::numeric_limits<int>::max()))
{
}

PR_IntItem::~PR_IntItem() = default;

void PR_IntItem::copy(PR_PrefItem *other)
{
    PR_TypedItem::copy(other);
    auto const *item = static_cast<PR_IntItem *>(other);
    m_minimum = item->m_minimum;
    m_maximum = item->m_maximum;
}

bool PR_IntItem::readElement(PR_ItemElement const &element, int &value) const
{
    bool ok = false;
    value = element.value().toInt(&ok);
    return ok;
}

bool PR_IntItem::readToken(TULex &lex, int &value) const
{
    return lex.get_int(value);
}

PR_ItemElement PR_IntItem::element() const
{
    return PR_ItemElement::of(getTag(), getKey(), QString::number(m_value));
}

QString PR_IntItem::asString(int value) const
{
    return QString::number(value);
}
