#include "PR_XmlScan_p.h"

#include <QStringDecoder>

namespace {
constexpr qsizetype maximumSizeWithEntities = 64 * 1024; // bytes of a file with a document type of its own

// The position behind the next occurrence of a text; the end when there is none.
qsizetype behind(QByteArray const &text, char const *what, qsizetype from)
{
    qsizetype const found = text.indexOf(what, from);
    return found < 0 ? text.size() : found + qsizetype(qstrlen(what));
}

bool standsAt(QByteArray const &text, qsizetype at, char const *what)
{
    return qstrncmp(text.constData() + at, what, qstrlen(what)) == 0;
}

// Whether a text whose declaration is readable as bytes goes on so: a parser that is told of UTF-16 or UTF-7 there
// would see other marks than the scan does.
bool declaresPlainEncoding(QByteArray const &bytes)
{
    qsizetype const start = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    if (!standsAt(bytes, start, "<?xml"))
        return true;
    QByteArray const declaration = bytes.left(behind(bytes, "?>", start)).toLower();
    qsizetype const at = declaration.indexOf("encoding");
    if (at < 0)
        return true;
    QByteArray const name = declaration.mid(at);
    for (char const *plain : { "utf-8", "utf8", "ascii", "iso-8859", "latin", "windows-125" }) {
        if (name.contains(plain))
            return true;
    }
    return false;
}
} // namespace

PR_XmlScan::PR_XmlScan(QByteArray const &bytes)
    : m_size(bytes.size())
{
    m_encodingIsPlain = declaresPlainEncoding(bytes);
    auto const encoding = QStringConverter::encodingForData(bytes, u'<');
    if (encoding && *encoding != QStringConverter::Utf8)
        scan(QString(QStringDecoder(*encoding).decode(bytes)).toUtf8());
    else
        scan(bytes);
}

bool PR_XmlScan::isReasonable() const
{
    return m_maxDepth <= maximumDepth && m_maxAttributes <= maximumAttributes
        && (!m_hasInternalSubset || m_size <= maximumSizeWithEntities);
}

// Where the text is not well-formed, the scan may go astray: a parser stops there.
void PR_XmlScan::scan(QByteArray const &text)
{
    for (qsizetype at = text.indexOf('<'); at >= 0; at = text.indexOf('<', at)) {
        if (standsAt(text, at, "<!--"))
            at = behind(text, "-->", at + 4);
        else if (standsAt(text, at, "<![CDATA["))
            at = behind(text, "]]>", at);
        else if (standsAt(text, at, "<?"))
            at = behind(text, "?>", at);
        else if (standsAt(text, at, "<!"))
            at = scanDeclaration(text, at);
        else if (standsAt(text, at, "</")) {
            --m_depth;
            at = behind(text, ">", at);
        } else
            at = scanTag(text, at);
    }
}

// A start tag or an empty element; gives the position behind it.
qsizetype PR_XmlScan::scanTag(QByteArray const &text, qsizetype at)
{
    ++m_elements;
    ++m_depth;
    m_maxDepth = qMax(m_maxDepth, m_depth);
    qsizetype attributes = 0;
    for (++at; at < text.size() && text[at] != '>'; ++at) {
        char const c = text[at];
        if (c == '"' || c == '\'') {
            ++attributes;
            at = text.indexOf(c, at + 1);
            if (at < 0)
                return text.size();
        }
    }
    m_maxAttributes = qMax(m_maxAttributes, attributes);
    if (at < text.size() && text[at - 1] == '/')
        --m_depth;
    return qMin(at + 1, text.size());
}

// A document type; gives the position behind it.
qsizetype PR_XmlScan::scanDeclaration(QByteArray const &text, qsizetype at)
{
    bool inSubset = false;
    for (at += 2; at < text.size() && (inSubset || text[at] != '>'); ++at) {
        char const c = text[at];
        if (c == '"' || c == '\'') {
            at = behind(text, c == '"' ? "\"" : "'", at + 1) - 1;
        } else if (c == '[' || c == ']') {
            inSubset = c == '[';
            m_hasInternalSubset = true;
        } else if (standsAt(text, at, "<!--")) {
            at = behind(text, "-->", at + 4) - 1;
        } else if (standsAt(text, at, "<?")) {
            at = behind(text, "?>", at) - 1;
        }
    }
    return qMin(at + 1, text.size());
}
