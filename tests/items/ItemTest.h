#ifndef ITEMTEST_H
#define ITEMTEST_H

#include "PR_EnumItem.h"
#include "PR_PrefConstants.h"
#include "TestSupport.h"

/*! The element that the item appends to a document; null when it appends none. */
inline QDomElement savedElement(PR_PrefItem &item, bool force)
{
    QDomDocument document;
    document.appendChild(document.createElement(kPref));
    item.saveXml(&document, force);
    return document.documentElement().firstChildElement();
}

/*! An element in one line: tag, CDATA in brackets, attributes in the order of their names. */
inline QString describe(QDomElement const &element)
{
    QStringList attributes;
    for (int i = 0; i < element.attributes().size(); ++i) {
        QDomAttr const attribute = element.attributes().item(i).toAttr();
        attributes += attribute.name() + QLatin1Char('=') + attribute.value();
    }
    attributes.sort();
    if (element.firstChild().isCDATASection())
        attributes.prepend(QLatin1Char('[') + element.text() + QLatin1Char(']'));
    attributes.prepend(element.tagName());
    return attributes.join(QLatin1Char(' '));
}

inline QString saved(PR_PrefItem &item, bool force = false)
{
    return describe(savedElement(item, force));
}

/*! An element of a definition or of the user's file, with the id "KEY". */
inline QDomElement element(QByteArray const &attributes, QByteArray const &tag = "x")
{
    return xmlElement("<" + tag + " id='KEY' " + attributes + "/>");
}

/*! An enumeration with the choices "fast", "nice" and "größe", shown with a capital. */
class TestEnumItem : public PR_EnumItem {
public:
    TestEnumItem(Category category, QString const &key, QDomElement const &definition)
        : PR_EnumItem(category, key, definition)
    {
        static char const *const names[] = { "fast", "nice", "größe" };
        m_nameTable = names;
        m_nameCount = std::size(names);
        m_displayNames = { QStringLiteral("Fast"), QStringLiteral("Nice"), QStringLiteral("Größe") };
    }
};

#endif
