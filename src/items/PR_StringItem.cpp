#include "PR_StringItem.h"
#include "PR_TypedItem_p.h"

#include "PR_RgbaItem.h"

#include <cstdio>

template class PR_TypedItem<PR_StringItem, QString>;

PR_StringItem::PR_StringItem(Category category, QString const &key, QString text)
    : PR_TypedItem(category, key, QStringLiteral("string"), text)
{
}

PR_StringItem::PR_StringItem(Category category, QString const &key, QDomElement const &definition)
    : PR_StringItem(category, key, definition.attribute(kValue))
{
}

bool PR_StringItem::valueAsBool(bool &ok) const
{
    QChar const first = m_value.isEmpty() ? QChar() : m_value.front().toLower();
    ok = first == u'y' || first == u'n';
    return first == u'y';
}

int PR_StringItem::valueAsInt(bool &ok) const
{
    return m_value.toInt(&ok);
}

double PR_StringItem::valueAsDouble(bool &ok) const
{
    return m_value.toDouble(&ok);
}

unsigned int PR_StringItem::valueAsRgba(bool &ok) const
{
    int red = 0, green = 0, blue = 0, alpha = 0;
    ok = std::sscanf(m_value.toLatin1().constData(), "%d %d %d %d", &red, &green, &blue, &alpha) == 4;
    return ok ? PR_RgbaItem::pack(red, green, blue, alpha) : 0;
}

bool PR_StringItem::readElement(QDomElement const &element, QString &text) const
{
    text = PR_PrefUtil::elementValue(element);
    return true;
}

bool PR_StringItem::readToken(TULex &lex, QString &text) const
{
    text = lex;
    lex.get(false);
    return true;
}

void PR_StringItem::appendTo(QDomDocument *document) const
{
    PR_PrefUtil::addElement(document, getTag(), getKey(), m_value, m_value.contains(u'\n'));
}
