#include "PR_IntItem.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_IntItem, int>;

namespace {
int rangeEnd(PR_Element const &definition, QStringView attribute, int undeclared)
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
    : PR_IntItem(category, key, *PR_ElementDom::treeOf(definition).root())
{
}

PR_IntItem::PR_IntItem(Category category, QString const &key, PR_Element const &definition)
    : PR_IntItem(category, key, definition.attribute(u"value").toInt(),
        rangeEnd(definition, u"min", std::numeric_limits<int>::min()),
        rangeEnd(definition, u"max", std::numeric_limits<int>::max()))
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

bool PR_IntItem::readElement(PR_Element const &element, int &value) const
{
    bool ok = false;
    value = element.value().toInt(&ok);
    return ok;
}

bool PR_IntItem::readToken(TULex &lex, int &value) const
{
    return lex.get_int(value);
}

void PR_IntItem::write(PR_XmlTree &tree, PR_Element *parent) const
{
    tree.addItem(parent, getTag(), getKey(), QString::number(m_value));
}

QString PR_IntItem::asString(int value) const
{
    return QString::number(value);
}
