#include "PR_ItemElement_p.h"

#include "PR_PrefConstants.h"

#include <QDomDocument>

#include <algorithm>

namespace {
QString cdataAttribute()
{
    return QStringLiteral("cdata");
}

bool isXmlName(QString const &text)
{
    auto const isLetter = [](QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_'; };
    auto const isNameCharacter = [&](QChar c) {
        return isLetter(c) || (c >= u'0' && c <= u'9') || c == u'-' || c == u'.';
    };
    return !text.isEmpty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), isNameCharacter);
}

// A reader turns CR LF into LF and ends the section at "]]>".
bool fitsCdata(QString const &text)
{
    return !text.contains(u'\r') && !text.contains(QLatin1String("]]>"));
}
} // namespace

PR_ItemElement PR_ItemElement::of(QString const &tag, QString const &id)
{
    PR_ItemElement element;
    element.tag = isXmlName(tag) ? tag : QStringLiteral("string");
    element.id = xmlText(id);
    return element;
}

PR_ItemElement PR_ItemElement::of(QString const &tag, QString const &id, QString const &value, bool asCdata)
{
    PR_ItemElement element = of(tag, id);
    QString const text = xmlText(value);
    element.hasCdata = asCdata && fitsCdata(text);
    if (element.hasCdata) {
        element.add(cdataAttribute(), QStringLiteral("true"));
        element.cdata = text;
    } else {
        element.add(kValue, text);
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

QString PR_ItemElement::xmlText(QString const &text)
{
    // The length in code units of the character at a position; 0 for one that XML cannot hold.
    auto const validLength = [&text](qsizetype i) {
        char16_t const c = text[i].unicode();
        if (c >= 0x20 && c < 0xD800) // nearly all
            return 1;
        if (QChar::isHighSurrogate(c))
            return i + 1 < text.size() && text[i + 1].isLowSurrogate() ? 2 : 0;
        bool const valid = c < 0x20 ? c == u'\t' || c == u'\n' || c == u'\r' : !QChar::isLowSurrogate(c) && c < 0xFFFE;
        return valid ? 1 : 0;
    };

    qsizetype i = 0;
    while (i < text.size() && validLength(i) > 0)
        i += validLength(i);
    if (i == text.size())
        return text;

    QString valid = text.left(i);
    while (i < text.size()) {
        int const length = validLength(i);
        valid += QStringView(text).mid(i, length);
        i += qMax(length, 1);
    }
    return valid;
}

QDomElement PR_ItemElement::toDom(QDomDocument &document) const
{
    QDomElement element = document.createElement(tag);
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
