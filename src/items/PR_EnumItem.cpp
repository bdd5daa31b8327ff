#include "PR_EnumItem.h"
#include "PR_FontItem.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_EnumItem, int>;

PR_EnumItem::PR_EnumItem(Category category, QString const &key, QString const &tag)
    : PR_TypedItem(category, key, tag, 0)
{
}

PR_EnumItem::PR_EnumItem(Category category, QString const &key, char const *tag)
    : PR_EnumItem(category, key, QString::fromLatin1(tag))
{
}

PR_EnumItem::PR_EnumItem(Category category, QString const &key, QDomElement const &definition)
    : PR_EnumItem(category, key, definition.attribute(kValue))
{
}

PR_EnumItem &PR_EnumItem::operator=(PR_EnumItem const &other)
{
    if (this == &other)
        return *this;
    PR_PrefItem::operator=(other);
    auto *const source = const_cast<PR_EnumItem *>(&other);
    // Through a reference to this class, a font must not share the table that the other will free. Not by the virtual
    // operation: that of a host's class may be made of this one.
    if (auto *const font = dynamic_cast<PR_FontItem *>(this))
        font->PR_FontItem::copy(source);
    else
        PR_EnumItem::copy(source);
    return *this;
}

PR_EnumItem::~PR_EnumItem() = default;

void PR_EnumItem::copy(PR_PrefItem *other)
{
    PR_TypedItem::copy(other);
    auto const *item = static_cast<PR_EnumItem *>(other);
    m_nameCount = item->m_nameCount;
    m_nameTable = item->m_nameTable;
    m_displayNames = item->m_displayNames;
}

QString PR_EnumItem::valueAsDisplayString() const
{
    return asDisplayString(m_value);
}

QString PR_EnumItem::defaultValueAsDisplayString() const
{
    return asDisplayString(m_default);
}

QString PR_EnumItem::asString(int index) const
{
    if (m_nameCount == 0)
        return QString::number(index);
    return isChoice(index) ? QString::fromUtf8(m_nameTable[index]) : QString();
}

QString PR_EnumItem::asDisplayString(int index) const
{
    if (m_nameCount == 0)
        return QString::number(index);
    return isChoice(index) ? m_displayNames.value(index) : QString();
}

int PR_EnumItem::index(QString const &name) const
{
    return qMax(0, findChoice(name));
}

int PR_EnumItem::indexDisplay(QString const &name) const
{
    return qMax(0, findDisplayChoice(name));
}

int PR_EnumItem::findChoice(QString const &name) const
{
    QString const wanted = name.toUpper();
    for (int i = 0; isChoice(i); ++i) {
        if (asString(i).toUpper() == wanted)
            return i;
    }
    return -1;
}

int PR_EnumItem::findDisplayChoice(QString const &name) const
{
    return int(m_displayNames.indexOf(name));
}

bool PR_EnumItem::readElement(PR_Element const &element, int &value) const
{
    value = index(element.attribute(u"value").toString());
    return true;
}

bool PR_EnumItem::readToken(TULex &lex, int &value) const
{
    value = index(lex);
    lex.get(false);
    return true;
}

void PR_EnumItem::write(PR_XmlTree &tree, PR_Element *parent) const
{
    tree.addItem(parent, getTag(), getKey(), valueAsString());
}
