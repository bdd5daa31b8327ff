#include "PR_ItemElement_p.h"

#include "PR_PrefConstants.h"

#include <QDomDocument>

#include <algorithm>

namespace {
QString cdataAttribute()
{
    return QStringLiteral("cdata");
}
} // namespace

PR_ItemElement PR_ItemElement::of(QString const &tag, QString const &id)
{
    PR_ItemElement element;
    element.tag = tag;
    element.id = id.isNull() ? QString(QLatin1String("")) : id;
    return element;
}

PR_ItemElement PR_ItemElement::of(QString const &tag, QString const &id, QString const &value, bool asCdata)
{
    PR_ItemElement element = of(tag, id);
    element.hasCdata = asCdata;
    if (asCdata) {
        element.add(cdataAttribute(), QStringLiteral("true"));
        element.cdata = value;
    } else {
        element.add(kValue, value);
    }
    return element;
}

PR_ItemElement PR_ItemElement::of(QDomElement const &dom)
{
    PR_ItemElement element;
    element.tag = dom.tagName();
    QDomNamedNodeMap const attributes = dom.attributes();
    for (int i = 0; i < attributes.size(); ++i) {
        QDomAttr const attribute = attributes.item(i).toAttr();
        if (attribute.name() == kId)
            element.id = attribute.value();
        else
            element.add(attribute.name(), attribute.value());
    }
    // A document keeps them in an order that differs from process to process.
    std::sort(element.attributes.begin(), element.attributes.end());
    QDomCDATASection const section = dom.firstChild().toCDATASection();
    element.hasCdata = !section.isNull();
    element.cdata = section.data();
    return element;
}

QDomElement PR_ItemElement::toDom(QDomDocument &document) const
{
    QDomElement element = document.createElement(tag);
    if (!id.isNull())
        element.setAttribute(kId, id);
    for (Attribute const &attribute : attributes)
        element.setAttribute(attribute.first, attribute.second);
    if (hasCdata)
        element.appendChild(document.createCDATASection(cdata));
    return element;
}

void PR_ItemElement::appendTo(QDomDocument *document) const
{
    document->documentElement().appendChild(toDom(*document));
}

PR_ItemElement::Attribute const *PR_ItemElement::find(QString const &name) const
{
    auto const found = std::find_if(
        attributes.begin(), attributes.end(), [&name](Attribute const &attribute) { return attribute.first == name; });
    return found == attributes.end() ? nullptr : found;
}

QString PR_ItemElement::attribute(QString const &name) const
{
    Attribute const *const found = find(name);
    return found ? found->second : QString();
}

QString PR_ItemElement::value() const
{
    return hasCdata && find(cdataAttribute()) ? cdata : attribute(kValue);
}
