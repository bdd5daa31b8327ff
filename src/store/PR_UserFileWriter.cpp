#include "PR_UserFileWriter_p.h"
#include "PR_XmlScan_p.h"

#include "PR_ItemElement_p.h"
#include "PR_PrefConstants.h"

#include <QDomElement>
#include <QXmlStreamReader>

#include <algorithm>

namespace {
QLatin1String const cdataAttribute("cdata");

bool isXmlName(QString const &text)
{
    auto const isLetter = [](QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_'; };
    auto const isNameCharacter = [&](QChar c) {
        return isLetter(c) || (c >= u'0' && c <= u'9') || c == u'-' || c == u'.';
    };
    if (text.isEmpty())
        return false;
    if (isLetter(text.front()) && std::all_of(text.begin(), text.end(), isNameCharacter)) // nearly all
        return true;
    // For the others, what counts is what a reader takes.
    QXmlStreamReader reader(u'<' + text + QLatin1String("/>"));
    reader.setNamespaceProcessing(false);
    return reader.readNextStartElement() && reader.qualifiedName() == text && reader.attributes().isEmpty()
        && reader.readNext() == QXmlStreamReader::EndElement;
}

// As QDomDocument::toString() escapes a text and, with its white space, an attribute.
void appendEscaped(QString &out, QString const &raw, bool isAttribute)
{
    QString const text = PR_UserFileWriter::xmlText(raw);
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

void appendCdata(QString &out, QString const &raw)
{
    // A section ends at the first "]]>": the end of that goes into a section of its own.
    QString text = PR_UserFileWriter::xmlText(raw);
    text.replace(QLatin1String("]]>"), QLatin1String("]]]]><![CDATA[>"));
    out.append(QLatin1String("<![CDATA[")).append(text).append(QLatin1String("]]>"));
}

void appendEnd(QString &out, QString const &tag)
{
    out.append(QLatin1String("</")).append(tag).append(u'>');
}

QString tagOf(PR_ItemElement const &element)
{
    // The value comes back under its key whatever the element's name.
    return isXmlName(element.tag) ? element.tag : QStringLiteral("string");
}

// Whether the value is in the "cdata" form, but would not come back so: a reader turns CR LF into LF in a section and
// ends it at "]]>".
bool needsValueForm(PR_ItemElement const &element)
{
    bool const isCdataForm = element.hasCdata && element.find(cdataAttribute) && !element.find(kValue);
    if (!isCdataForm)
        return false;
    QString const text = PR_UserFileWriter::xmlText(element.cdata);
    return text.contains(u'\r') || text.contains(QLatin1String("]]>"));
}

void appendComment(QString &out, QString const &raw)
{
    QString text = PR_UserFileWriter::xmlText(raw);
    while (text.contains(QLatin1String("--")))
        text.replace(QLatin1String("--"), QLatin1String("- -"));
    out.append(QLatin1String("<!--")).append(text).append(QLatin1String(text.endsWith(u'-') ? " -->" : "-->"));
}

void appendInstruction(QString &out, QString const &target, QString const &raw)
{
    QString text = PR_UserFileWriter::xmlText(raw);
    text.replace(QLatin1String("?>"), QLatin1String("? >"));
    out.append(QLatin1String("<?")).append(target).append(u' ').append(text).append(QLatin1String("?>\n"));
}

// Whether a node is a processing instruction that may stand in an element.
bool isInstruction(QDomNode const &node)
{
    QString const target = node.nodeName();
    return node.isProcessingInstruction() && isXmlName(target)
        && target.compare(QLatin1String("xml"), Qt::CaseInsensitive) != 0;
}

bool isText(QDomNode const &node)
{
    return node.isText() || node.isCDATASection();
}
} // namespace

QString PR_UserFileWriter::xmlText(QString const &text)
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

void PR_UserFileWriter::add(PR_ItemElement const &element)
{
    m_content.append(u' ');
    appendItem(element);
    m_content.append(u'\n');
}

void PR_UserFileWriter::addContentOf(QDomElement const &root)
{
    appendAttributes(m_rootAttributes, PR_ItemElement::of(root));
    for (QDomNode node = root.firstChild(); !node.isNull(); node = node.nextSibling())
        appendNode(node, 1);
}

void PR_UserFileWriter::appendAttributes(QString &out, PR_ItemElement const &element)
{
    if (!element.id.isEmpty())
        appendAttribute(out, kId, element.id);
    qsizetype room = PR_XmlScan::maximumAttributes - 1;
    for (auto const &[name, text] : element.attributes) {
        if (room-- <= 0)
            m_isCutShort = true;
        else if (isXmlName(name))
            appendAttribute(out, name, text);
    }
}

void PR_UserFileWriter::appendItem(PR_ItemElement const &element)
{
    QString const tag = tagOf(element);
    m_content.append(u'<').append(tag);
    if (needsValueForm(element)) {
        PR_ItemElement changed = PR_ItemElement::of(element.tag, element.id, element.cdata);
        for (PR_ItemElement::Attribute const &attribute : element.attributes) {
            if (attribute.first != cdataAttribute)
                changed.add(attribute.first, attribute.second);
        }
        appendAttributes(m_content, changed);
        m_content.append(QLatin1String("/>"));
        return;
    }
    appendAttributes(m_content, element);
    if (element.hasCdata) {
        m_content.append(u'>');
        appendCdata(m_content, element.cdata);
        appendEnd(m_content, tag);
    } else {
        m_content.append(QLatin1String("/>"));
    }
}

// The blanks and line ends around a node are those of QDomNode::save().
void PR_UserFileWriter::appendNode(QDomNode const &node, int depth)
{
    if (node.isCDATASection())
        return appendCdata(m_content, node.nodeValue());
    if (node.isText())
        return appendEscaped(m_content, node.nodeValue(), false);
    if (isInstruction(node))
        return appendInstruction(m_content, node.nodeName(), node.nodeValue());
    // An entity reference would have nothing to refer to.
    if (!node.isElement() && !node.isComment())
        return;
    if (!isText(node.previousSibling()))
        m_content.append(QString(depth, u' '));
    if (node.isElement())
        appendElement(node.toElement(), depth);
    else
        appendComment(m_content, node.nodeValue());
    if (!isText(node.nextSibling()))
        m_content.append(u'\n');
}

void PR_UserFileWriter::appendElement(QDomElement const &element, int depth)
{
    PR_ItemElement const content = PR_ItemElement::of(element);
    QDomNode const last = element.lastChild();
    bool const holdsOneSection = content.hasCdata && last == element.firstChild();
    if (last.isNull() || holdsOneSection)
        return appendItem(content);
    QString const tag = tagOf(content);
    m_content.append(u'<').append(tag);
    appendAttributes(m_content, content);
    m_content.append(u'>');
    if (!isText(last))
        m_content.append(u'\n');
    if (depth + 1 < PR_XmlScan::maximumDepth) {
        for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling())
            appendNode(node, depth + 1);
    } else {
        m_isCutShort = true;
    }
    if (!isText(last))
        m_content.append(QString(depth, u' '));
    appendEnd(m_content, tag);
}

QByteArray PR_UserFileWriter::bytes() const
{
    QByteArray const declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    QByteArray const root = '<' + kPref.toUtf8() + m_rootAttributes.toUtf8();
    if (m_content.isEmpty())
        return declaration + root + "/>\n";
    return declaration + root + ">\n" + m_content.toUtf8() + "</" + kPref.toUtf8() + ">\n";
}
