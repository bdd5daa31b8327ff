#include "PR_UserFileWriter_p.h"

#include "PR_ItemElement_p.h"
#include "PR_PrefConstants.h"

#include <QDomElement>

namespace {
// As QDomDocument::toString() escapes a text and, with its white space, an attribute.
void appendEscaped(QString &out, QString const &text, bool isAttribute)
{
    qsizetype written = 0;
    auto const replace = [&](qsizetype at, QLatin1String entity) {
        out.append(QStringView(text).mid(written, at - written));
        out.append(entity);
        written = at + 1;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        char16_t const c = text[i].unicode();
        if (c > u'>')
            continue;
        if (c == u'&')
            replace(i, QLatin1String("&amp;"));
        else if (c == u'<')
            replace(i, QLatin1String("&lt;"));
        else if (c == u'>' && i >= 2 && text[i - 1] == u']' && text[i - 2] == u']')
            replace(i, QLatin1String("&gt;"));
        else if (c == u'\r')
            replace(i, QLatin1String("&#xd;"));
        else if (isAttribute && c == u'"')
            replace(i, QLatin1String("&quot;"));
        else if (isAttribute && c == u'\n')
            replace(i, QLatin1String("&#xa;"));
        else if (isAttribute && c == u'\t')
            replace(i, QLatin1String("&#x9;"));
    }
    out.append(QStringView(text).mid(written));
}

void appendAttribute(QString &out, QString const &name, QString const &text)
{
    out.append(u' ').append(name).append(QLatin1String("=\""));
    appendEscaped(out, text, true);
    out.append(u'"');
}

void appendCdata(QString &out, QString const &text)
{
    // A section ends at the first "]]>": the end of that goes into a section of its own.
    QString safe = text;
    safe.replace(QLatin1String("]]>"), QLatin1String("]]]]><![CDATA[>"));
    out.append(QLatin1String("<![CDATA[")).append(safe).append(QLatin1String("]]>"));
}

void appendEnd(QString &out, QString const &tag)
{
    out.append(QLatin1String("</")).append(tag).append(u'>');
}
} // namespace

void PR_UserFileWriter::appendStart(PR_ItemElement const &element)
{
    m_elements.append(u'<').append(element.tag);
    if (!element.id.isEmpty())
        appendAttribute(m_elements, kId, element.id);
    for (auto const &[name, text] : element.attributes)
        appendAttribute(m_elements, name, text);
}

void PR_UserFileWriter::add(PR_ItemElement const &element)
{
    m_elements.append(u' ');
    appendStart(element);
    if (element.hasCdata) {
        m_elements.append(u'>');
        appendCdata(m_elements, element.cdata);
        appendEnd(m_elements, element.tag);
    } else {
        m_elements.append(QLatin1String("/>"));
    }
    m_elements.append(u'\n');
}

void PR_UserFileWriter::add(QDomElement const &element)
{
    m_elements.append(u' ');
    append(element);
    m_elements.append(u'\n');
}

void PR_UserFileWriter::append(QDomElement const &element)
{
    PR_ItemElement content = PR_ItemElement::of(element);
    content.id = PR_ItemElement::xmlText(content.id);
    for (PR_ItemElement::Attribute &attribute : content.attributes)
        attribute.second = PR_ItemElement::xmlText(attribute.second);
    appendStart(content);
    m_elements.append(u'>');
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (node.isElement())
            append(node.toElement());
        else if (node.isCDATASection())
            appendCdata(m_elements, PR_ItemElement::xmlText(node.nodeValue()));
        else if (node.isText())
            appendEscaped(m_elements, PR_ItemElement::xmlText(node.nodeValue()), false);
    }
    appendEnd(m_elements, content.tag);
}

QByteArray PR_UserFileWriter::bytes() const
{
    QByteArray const declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    QByteArray const root = kPref.toUtf8();
    if (m_elements.isEmpty())
        return declaration + '<' + root + "/>\n";
    return declaration + '<' + root + ">\n" + m_elements.toUtf8() + "</" + root + ">\n";
}
