#include "PR_StringItem.h"
#include "PR_TypedItem_p.h"

#include "PR_RgbaItem.h"

#include <cstdlib>

template class PR_TypedItem<PR_StringItem, QString>;

PR_StringItem::PR_StringItem(Category category, QString const &key, QString text)
    : PR_TypedItem(category, key, QStringLiteral("string"), text)
{
}

PR_StringItem::PR_StringItem(Category category, QString const &key, QDomElement const &definition)
    : PR_StringItem(category, key, definition.attribute(kValue))
{
}

PR_StringItem::PR_StringItem(Category category, QString const &key, PR_Element const &definition)
    : PR_StringItem(category, key, definition.attribute(u"value").toString())
{
}

PR_StringItem::~PR_StringItem() = default;

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
    QByteArray const text = m_value.toLatin1();
    char const *at = text.constData();
    int channels[4] = {};
    ok = true;
    for (int &channel : channels) {
        char *behind = nullptr;
        channel = static_cast<int>(std::strtol(at, &behind, 10));
        ok = ok && behind != at;
        at = behind;
    }
    return ok ? PR_RgbaItem::pack(channels[0], channels[1], channels[2], channels[3]) : 0;
}

bool PR_StringItem::readElement(PR_Element const &element, QString &text) const
{
    text = element.value().toString();
    return true;
}

bool PR_StringItem::readToken(TULex &lex, QString &text) const
{
    text = lex;
    lex.get(false);
    return true;
}

void PR_StringItem::write(PR_XmlTree &tree, PR_Element *parent) const
{
    tree.addItem(parent, getTag(), getKey(), m_value, m_value.contains(u'\n'));
}
