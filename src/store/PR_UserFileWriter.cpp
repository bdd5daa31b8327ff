#include "PR_UserFileWriter_p.h"

#include "PR_PrefConstants.h"
#include "PR_XmlReader_p.h"

#include <QVarLengthArray>
#include <QXmlStreamReader>

#include <algorithm>

namespace {
// How many code units at the beginning of a text are of characters that XML can hold.
qsizetype validLength(QStringView text)
{
    qsizetype i = 0;
    for (; i < text.size(); ++i) {
        char16_t const c = text[i].unicode();
        if (c >= 0x20 && c < 0xD800) // nearly all
            continue;
        if (QChar::isHighSurrogate(c)) {
            if (i + 1 == text.size() || !text[i + 1].isLowSurrogate())
                break;
            ++i;
        } else if (c < 0x20 ? c != u'\t' && c != u'\n' && c != u'\r' : QChar::isLowSurrogate(c) || c >= 0xFFFE) {
            break;
        }
    }
    return i;
}

bool isXmlName(QStringView text)
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
void appendEscaped(QString &out, QStringView raw, bool isAttribute)
{
    QString mended;
    QStringView text = raw;
    if (validLength(raw) != raw.size()) {
        mended = PR_UserFileWriter::xmlText(raw.toString());
        text = mended;
    }
    qsizetype written = 0;
    auto const replace = [&](qsizetype at, QLatin1String entity) {
        out.append(text.mid(written, at - written));
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
    out.append(text.mid(written));
}

void appendText(QString &out, PR_TextNode const &node)
{
    if (node.kind == PR_Node::Text)
        return appendEscaped(out, node.text, false);
    QString text = PR_UserFileWriter::xmlText(node.text.toString());
    if (node.kind == PR_Node::Cdata) {
        // A section ends at the first "]]>": the end of that goes into a section of its own.
        text.replace(QLatin1String("]]>"), QLatin1String("]]]]><![CDATA[>"));
        out.append(QLatin1String("<![CDATA[")).append(text).append(QLatin1String("]]>"));
    } else if (node.kind == PR_Node::Comment) {
        while (text.contains(QLatin1String("--")))
            text.replace(QLatin1String("--"), QLatin1String("- -"));
        out.append(QLatin1String("<!--")).append(text).append(QLatin1String(text.endsWith(u'-') ? " -->" : "-->"));
    } else if (node.kind == PR_Node::Instruction && isXmlName(node.name)
        && node.name.compare(u"xml", Qt::CaseInsensitive) != 0) {
        text.replace(QLatin1String("?>"), QLatin1String("? >"));
        out.append(QLatin1String("<?")).append(node.name).append(u' ').append(text).append(QLatin1String("?>\n"));
    }
    // An entity reference would have nothing to refer to.
}

bool isText(PR_Node const *node)
{
    return node && (node->kind == PR_Node::Text || node->kind == PR_Node::Cdata);
}

// Whether the value is in the "cdata" form, but would not come back so: a reader turns CR LF into LF in a section and
// ends it at "]]>".
bool needsValueForm(PR_Element const &element)
{
    PR_TextNode const *const section = element.section();
    if (!section || section->next || !element.hasAttribute(kCdata) || element.hasAttribute(kValue))
        return false;
    QString const text = PR_UserFileWriter::xmlText(section->text.toString());
    return text.contains(u'\r') || text.contains(QLatin1String("]]>"));
}
} // namespace

QString PR_UserFileWriter::xmlText(QString const &text)
{
    qsizetype valid = validLength(text);
    if (valid == text.size())
        return text;
    QString mended;
    for (QStringView rest = text; !rest.isEmpty(); valid = validLength(rest)) {
        mended.append(rest.left(valid));
        rest = rest.mid(valid + 1);
    }
    return mended;
}

QByteArray PR_UserFileWriter::bytesOf(PR_Element const &root)
{
    m_text = QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<") + kPref;
    appendAttributes(root.attributes, root.attributeCount);
    if (root.firstNode) {
        m_text.append(QLatin1String(">\n"));
        appendContent(root, 0);
        m_text.append(QLatin1String("</")).append(kPref).append(QLatin1String(">\n"));
    } else {
        m_text.append(QLatin1String("/>\n"));
    }
    return m_text.toUtf8();
}

void PR_UserFileWriter::appendAttributes(PR_Attribute const *attributes, int count)
{
    // One more than a reader takes never comes in: each element has room for its id.
    int room = PR_XmlFile::MaximumAttributes - 1;
    for (PR_Attribute const *each = attributes; each != attributes + count; ++each) {
        bool const isId = each->name == kId;
        if (!isId && --room < 0) {
            m_isCutShort = true;
        } else if (isXmlName(each->name)) {
            m_text.append(u' ').append(each->name).append(QLatin1String("=\""));
            appendEscaped(m_text, each->value, true);
            m_text.append(u'"');
        }
    }
}

void PR_UserFileWriter::appendElement(PR_Element const &element, int depth)
{
    // The value comes back under its key whatever the element's name.
    QStringView const tag = isXmlName(element.name) ? element.name : QStringView(u"string");
    m_text.append(u'<').append(tag);
    bool const isValueForm = needsValueForm(element);
    if (isValueForm) {
        QVarLengthArray<PR_Attribute> attributes;
        for (int i = 0; i < element.attributeCount; ++i) {
            bool const isForm = element.attributes[i].name == kCdata;
            attributes.append(isForm ? PR_Attribute{ kValue, element.section()->text } : element.attributes[i]);
        }
        appendAttributes(attributes.constData(), int(attributes.size()));
    } else {
        appendAttributes(element.attributes, element.attributeCount);
    }
    if (isValueForm || !element.firstNode) {
        m_text.append(QLatin1String("/>"));
        return;
    }
    m_text.append(u'>');
    if (!isText(element.lastNode))
        m_text.append(u'\n');
    if (depth + 1 < PR_XmlFile::MaximumDepth || !element.firstElement())
        appendContent(element, depth);
    else
        m_isCutShort = true;
    if (!isText(element.lastNode))
        m_text.append(QString(depth, u' '));
    m_text.append(QLatin1String("</")).append(tag).append(u'>');
}

// The blanks and line ends around a node are those of QDomNode::save().
void PR_UserFileWriter::appendContent(PR_Element const &element, int depth)
{
    PR_Node const *previous = nullptr;
    for (PR_Node const *node = element.firstNode; node; previous = node, node = node->next) {
        bool const standsAlone = node->kind == PR_Node::Element || node->kind == PR_Node::Comment;
        if (standsAlone && !isText(previous))
            m_text.append(QString(depth + 1, u' '));
        if (node->kind == PR_Node::Element)
            appendElement(static_cast<PR_Element const &>(*node), depth + 1);
        else
            appendText(m_text, static_cast<PR_TextNode const &>(*node));
        if (standsAlone && !isText(node->next))
            m_text.append(u'\n');
    }
}
