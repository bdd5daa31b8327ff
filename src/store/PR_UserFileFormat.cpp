#include "PR_UserFileFormat_p.h"

#include "PR_PrefConstants.h"
#include "PR_PrefUtil_p.h"

#include <QDomDocument>
#include <QXmlStreamWriter>

#include <algorithm>
#include <vector>

namespace {
// An element of the DOM keeps its attributes in an order that differs from process to process.
std::vector<QDomAttr> sortedAttributes(QDomElement const &element)
{
    QDomNamedNodeMap const map = element.attributes();
    std::vector<QDomAttr> attributes;
    for (int i = 0; i < map.size(); ++i)
        attributes.push_back(map.item(i).toAttr());
    std::sort(attributes.begin(), attributes.end(), [](QDomAttr const &a, QDomAttr const &b) {
        bool const aIsId = a.name() == kId;
        bool const bIsId = b.name() == kId;
        return aIsId != bIsId ? aIsId : a.name() < b.name();
    });
    return attributes;
}

// The library's own items hold no text that XML cannot; those of hosts may.
void write(QXmlStreamWriter &writer, QDomElement const &element)
{
    writer.writeStartElement(element.tagName());
    for (QDomAttr const &attribute : sortedAttributes(element))
        writer.writeAttribute(attribute.name(), PR_PrefUtil::xmlText(attribute.value()));
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (node.isElement())
            write(writer, node.toElement());
        else if (node.isCDATASection())
            writer.writeCDATA(PR_PrefUtil::xmlText(node.nodeValue()));
        else if (node.isText())
            writer.writeCharacters(PR_PrefUtil::xmlText(node.nodeValue()));
    }
    writer.writeEndElement();
}
} // namespace

QByteArray PR_UserFileFormat::toBytes(QDomDocument const &document)
{
    QString text;
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    write(writer, document.documentElement());
    writer.writeEndDocument();
    // The writer begins each element, the root too, on a new line.
    return R"(<?xml version="1.0" encoding="UTF-8"?>)" + text.toUtf8();
}
