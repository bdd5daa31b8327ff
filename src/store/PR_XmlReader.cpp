#include "PR_XmlReader_p.h"

#include <QCoreApplication>
#include <QStringDecoder>
#include <QVarLengthArray>
#include <QXmlStreamReader>

namespace {
struct Place {
    qsizetype line = 0; // from 1, as the column; 0 for none
    qsizetype column = 0;
};

// Why a text is turned away.
struct Fault {
    QString text;
    Place place = {};
};

// ---- One text in UTF-8, whatever the file is in

// The value of "encoding" in the declaration with which a text begins: its position and length; -1 for none.
std::pair<qsizetype, qsizetype> declaredEncoding(QByteArray const &text)
{
    if (!text.startsWith("<?xml"))
        return { -1, 0 };
    qsizetype const end = text.indexOf("?>");
    qsizetype at = text.left(end).indexOf("encoding");
    if (end < 0 || at < 0)
        return { -1, 0 };
    for (at += 8; at < end && text[at] != '"' && text[at] != '\''; ++at) { }
    qsizetype const close = text.indexOf(text[at], at + 1);
    return at < end && close > at && close < end ? std::pair(at + 1, close - at - 1)
                                                 : std::pair(qsizetype(-1), qsizetype(0));
}

// Converts a text to UTF-8 and gives it a declaration that says so. What is UTF-8 already is not looked at: the parser
// does that.
QString convertToUtf8(QByteArray &bytes)
{
    auto const byMark = QStringConverter::encodingForData(bytes, u'<');
    bool const isUtf8 = byMark.value_or(QStringConverter::Utf8) == QStringConverter::Utf8;
    bool const hasMark = bytes.startsWith("\xEF\xBB\xBF");
    if (hasMark)
        bytes.remove(0, 3);
    auto const [at, length] = isUtf8 ? declaredEncoding(bytes) : std::pair(qsizetype(-1), qsizetype(0));
    QByteArray const declared = bytes.mid(qMax<qsizetype>(at, 0), length);
    if (isUtf8 && (at < 0 || declared.compare("UTF-8", Qt::CaseInsensitive) == 0))
        return {};

    if (!hasMark) {
        QStringDecoder decoder = isUtf8 ? QStringDecoder(declared.constData()) : QStringDecoder(*byMark);
        if (!decoder.isValid())
            return QCoreApplication::translate("PR_XmlReader", "The encoding \"%1\" is not known.")
                .arg(QString::fromLatin1(declared));
        QString const text = decoder.decode(bytes);
        if (decoder.hasError())
            return QCoreApplication::translate("PR_XmlReader", "The text is not in the encoding \"%1\".")
                .arg(isUtf8 ? QString::fromLatin1(declared)
                            : QString::fromLatin1(QStringConverter::nameForEncoding(*byMark)));
        bytes = text.toUtf8();
    }
    auto const [place, size] = declaredEncoding(bytes);
    if (place >= 0) // with blanks, so that columns stay
        bytes.replace(place, size + 1,
            QByteArray("UTF-8" + bytes.mid(place + size, 1) + QByteArray(qMax<qsizetype>(0, size - 5), ' ')));
    return {};
}

// ---- A look at the bytes, before a parser spends time on them

class Scan {
public:
    explicit Scan(QByteArray const &text)
        : m_text(text)
    {
    }

    // Where the text is not well-formed, the scan may go astray: the parser stops there.
    Fault run(qsizetype maximumElements)
    {
        for (qsizetype at = m_text.indexOf('<'); at >= 0 && m_fault.text.isEmpty(); at = m_text.indexOf('<', at)) {
            if (standsAt(at, "<!--"))
                at = behind("-->", at + 4);
            else if (standsAt(at, "<![CDATA["))
                at = behind("]]>", at);
            else if (standsAt(at, "<?"))
                at = behind("?>", at);
            else if (standsAt(at, "<!"))
                at = scanDocumentType(at);
            else if (standsAt(at, "</")) {
                --m_depth;
                at = behind(">", at);
            } else {
                if (++m_elements > maximumElements)
                    fail(at,
                        QCoreApplication::translate("PR_XmlReader", "There are more than %1 elements.")
                            .arg(maximumElements));
                at = scanTag(at);
            }
        }
        return m_fault;
    }

    qsizetype elements() const { return m_elements; }
    Place root() const { return placeOf(m_root); }

private:
    bool standsAt(qsizetype at, char const *what) const
    {
        return qstrncmp(m_text.constData() + at, what, qstrlen(what)) == 0;
    }

    // The position behind the next occurrence of a text; the end when there is none.
    qsizetype behind(char const *what, qsizetype from) const
    {
        qsizetype const found = m_text.indexOf(what, from);
        return found < 0 ? m_text.size() : found + qsizetype(qstrlen(what));
    }

    // As the parser counts: lines end with a line feed, a carriage return or both.
    Place placeOf(qsizetype at) const
    {
        Place place{ 1, 1 };
        qsizetype start = 0;
        for (qsizetype i = 0; i < at; ++i) {
            if (m_text[i] == '\n' || (m_text[i] == '\r' && m_text[i + 1] != '\n')) {
                ++place.line;
                start = i + 1;
            }
        }
        place.column += QString::fromUtf8(m_text.constData() + start, qMax(at, start) - start).size();
        return place;
    }

    void fail(qsizetype at, QString const &text) { m_fault = { text, placeOf(at) }; }

    // A start tag or an empty element; gives the position behind it.
    qsizetype scanTag(qsizetype const begin)
    {
        if (m_root < 0)
            m_root = begin;
        if (++m_depth > PR_XmlFile::MaximumDepth)
            fail(begin,
                QCoreApplication::translate("PR_XmlReader", "Elements are nested more than %1 deep.")
                    .arg(PR_XmlFile::MaximumDepth));
        qsizetype attributes = 0;
        qsizetype at = begin + 1;
        for (; at < m_text.size() && m_text[at] != '>'; ++at) {
            char const c = m_text[at];
            if (c == '"' || c == '\'') {
                ++attributes;
                at = m_text.indexOf(c, at + 1);
                if (at < 0)
                    return m_text.size();
            }
        }
        if (attributes > PR_XmlFile::MaximumAttributes)
            fail(begin,
                QCoreApplication::translate("PR_XmlReader", "The element has more than %1 attributes.")
                    .arg(PR_XmlFile::MaximumAttributes));
        if (at < m_text.size() && m_text[at - 1] == '/')
            --m_depth;
        return qMin(at + 1, m_text.size());
    }

    // A document type; gives the position behind it.
    qsizetype scanDocumentType(qsizetype const begin)
    {
        qsizetype subset = -1; // where it begins, while in it
        qsizetype at = begin + 2;
        for (; at < m_text.size() && (subset >= 0 || m_text[at] != '>'); ++at) {
            char const c = m_text[at];
            if (c == '"' || c == '\'')
                at = behind(c == '"' ? "\"" : "'", at + 1) - 1;
            else if (c == '[' && subset < 0)
                subset = at;
            else if (c == ']')
                subset = -1;
            else if (standsAt(at, "<!--"))
                at = behind("-->", at + 4) - 1;
            else if (standsAt(at, "<?"))
                at = behind("?>", at) - 1;
            if (subset >= 0 && at - subset > PR_XmlFile::MaximumSubset) {
                fail(begin,
                    QCoreApplication::translate(
                        "PR_XmlReader", "The document type of the file's own is larger than %1 KB.")
                        .arg(PR_XmlFile::MaximumSubset / 1024));
                return m_text.size();
            }
        }
        return qMin(at + 1, m_text.size());
    }

    QByteArray const &m_text;
    Fault m_fault;
    qsizetype m_elements = 0;
    qsizetype m_depth = 0;
    qsizetype m_root = -1;
};

// ---- The tree

// The references to entities of the file's own: those that every file has stand for one character.
qsizetype referencesIn(QByteArray const &text)
{
    qsizetype count = 0;
    for (qsizetype at = text.indexOf('&'); at >= 0; at = text.indexOf('&', at + 1)) {
        QByteArrayView const reference = QByteArrayView(text).sliced(at);
        bool const isUsual = reference.startsWith("&#") || reference.startsWith("&amp;") || reference.startsWith("&lt;")
            || reference.startsWith("&gt;") || reference.startsWith("&quot;") || reference.startsWith("&apos;");
        count += isUsual ? 0 : 1;
    }
    return count;
}

class Parser {
public:
    Parser(QByteArray const &text, PR_XmlTree &tree, qsizetype maximumElements)
        : m_reader(text)
        , m_tree(tree)
        , m_elementsLeft(maximumElements)
        , m_charactersLeft(2 * text.size() + (1 << 20))
    {
        m_reader.setNamespaceProcessing(false);
        // A text is delivered as a whole, with all the entities in it: what all references together may bring is shared
        // out between them.
        qsizetype const references = qMax<qsizetype>(referencesIn(text), 1);
        m_reader.setEntityExpansionLimit(int(qBound(qsizetype(1), m_charactersLeft / references, qsizetype(4096))));
    }

    Fault run()
    {
        while (!m_reader.atEnd()) {
            m_line = m_reader.lineNumber();
            // Behind characters the reader has taken the first one of the markup already.
            m_column = m_reader.columnNumber() + (m_reader.isCharacters() && !m_reader.isCDATA() ? 0 : 1);
            switch (m_reader.readNext()) {
            case QXmlStreamReader::StartElement:
                begin();
                break;
            case QXmlStreamReader::EndElement:
                m_parent = m_parent->parent;
                --m_depth;
                break;
            case QXmlStreamReader::DTD:
                if (m_tree.root()) // the reader lets it pass, a document does not
                    fail(QCoreApplication::translate(
                        "PR_XmlReader", "A document type stands inside of the root or behind it."));
                break;
            default:
                if (m_parent)
                    addText();
            }
        }
        if (!m_reader.hasError())
            return {};
        return { m_reader.errorString(), { m_reader.lineNumber(), m_reader.columnNumber() + 1 } };
    }

private:
    void fail(QString const &text) { m_reader.raiseError(text); }

    void begin()
    {
        QXmlStreamAttributes const attributes = m_reader.attributes();
        m_attributes.clear();
        qsizetype characters = 4 + m_reader.qualifiedName().size(); // so that elements alone are not for nothing
        for (QXmlStreamAttribute const &attribute : attributes) {
            m_attributes.append({ attribute.qualifiedName(), attribute.value() });
            characters += attribute.qualifiedName().size() + attribute.value().size();
        }
        if (++m_depth > PR_XmlFile::MaximumDepth)
            return fail(QCoreApplication::translate("PR_XmlReader", "Elements are nested more than %1 deep.")
                            .arg(PR_XmlFile::MaximumDepth));
        if (attributes.size() > PR_XmlFile::MaximumAttributes)
            return fail(QCoreApplication::translate("PR_XmlReader", "The element has more than %1 attributes.")
                            .arg(PR_XmlFile::MaximumAttributes));
        if (--m_elementsLeft < 0)
            return fail(QCoreApplication::translate("PR_XmlReader", "Entities bring too many elements."));
        if (!take(characters))
            return;
        m_parent =
            m_tree.addElement(m_parent, m_reader.qualifiedName(), m_attributes.constData(), int(m_attributes.size()));
        m_parent->line = int(m_line);
        m_parent->column = int(m_column);
    }

    bool take(qsizetype characters)
    {
        m_charactersLeft -= characters;
        if (m_charactersLeft < 0)
            fail(QCoreApplication::translate("PR_XmlReader", "Entities multiply the text."));
        return m_charactersLeft >= 0;
    }

    void addText()
    {
        auto const add = [this](PR_Node::Kind kind, QStringView name, QStringView text) {
            if (take(name.size() + text.size()))
                m_tree.addText(m_parent, kind, name, text);
        };
        if (m_reader.isCDATA())
            add(PR_Node::Cdata, {}, m_reader.text());
        else if (m_reader.isCharacters() && !m_reader.text().trimmed().isEmpty())
            add(PR_Node::Text, {}, m_reader.text());
        else if (m_reader.isComment())
            add(PR_Node::Comment, {}, m_reader.text());
        else if (m_reader.isProcessingInstruction())
            add(PR_Node::Instruction, m_reader.processingInstructionTarget(), m_reader.processingInstructionData());
        else if (m_reader.isEntityReference())
            add(PR_Node::Reference, m_reader.name(), {});
    }

    QXmlStreamReader m_reader;
    PR_XmlTree &m_tree;
    PR_Element *m_parent = nullptr; // the innermost element that is open
    QVarLengthArray<PR_Attribute, 16> m_attributes; // of the current element
    qsizetype m_depth = 0;
    qsizetype m_elementsLeft;
    qsizetype m_charactersLeft;
    qint64 m_line = 0;
    qint64 m_column = 0;
};
} // namespace

// ---- Files

PR_XmlFile PR_XmlFile::parse(QByteArray const &bytes, qsizetype maximumElements)
{
    PR_XmlFile result;
    result.state = NotXml;
    result.text = bytes;
    QByteArray &text = result.text;
    Fault fault{ convertToUtf8(text) };
    Scan scan(text);
    if (fault.text.isEmpty())
        fault = scan.run(maximumElements);
    result.elementCount = scan.elements();
    if (fault.text.isEmpty()) {
        PR_XmlTree tree(size_t(4 * text.size()) + 1024);
        fault = Parser(text, tree, maximumElements).run();
        if (fault.text.isEmpty()) {
            // The parser passes blanks before the root over.
            tree.root()->line = int(scan.root().line);
            tree.root()->column = int(scan.root().column);
            result.tree = std::move(tree);
            result.state = Read;
        }
    }
    result.error = fault.text;
    result.errorLine = int(fault.place.line);
    result.errorColumn = int(fault.place.column);
    return result;
}

PR_XmlFile PR_XmlFile::read(QString const &path, qsizetype maximumElements)
{
    PL_InputFile const file = PL_InputFile::read(path);
    PR_XmlFile result;
    if (file.error.isEmpty())
        result = parse(file.bytes, maximumElements);
    else
        result.error = file.error;
    result.path = path;
    result.version = file.version;
    return result;
}
