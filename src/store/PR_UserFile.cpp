#include "PR_UserFile_p.h"

#include "PR_PrefConstants.h"
#include "PR_PrefItem.h"

#include <QCoreApplication>
#include <QXmlStreamReader>

namespace {
// The names that nearly all elements and attributes have, so that each text is held once.
QString sharedName(QStringView name)
{
    static QString const names[] = { kValue, QStringLiteral("string"), QStringLiteral("bool"), QStringLiteral("int"),
        QStringLiteral("double"), QStringLiteral("color"), kAlpha, kBlue, kGreen, kRed, QStringLiteral("cdata") };
    for (QString const &known : names) {
        if (known == name)
            return known;
    }
    return name.toString();
}
} // namespace

/*! Reads token by token. A document of the whole file would cost several times the time and ten times the memory. */
class PR_UserFile::Parser {
public:
    Parser(QByteArray const &bytes, PR_UserFile &result)
        : m_reader(bytes)
        , m_result(result)
    {
        m_reader.setNamespaceProcessing(false);
    }

    void parse()
    {
        while (!m_reader.atEnd()) {
            switch (m_reader.readNext()) {
            case QXmlStreamReader::StartElement:
                begin();
                ++m_depth;
                break;
            case QXmlStreamReader::EndElement:
                --m_depth;
                m_node = m_node.parentNode();
                break;
            case QXmlStreamReader::DTD:
                if (m_depth > 0) // the reader lets it pass, a document does not
                    m_reader.raiseError(
                        QCoreApplication::translate("PR_XmlFile", "a document type inside of the root"));
                break;
            default:
                addContent();
            }
        }
        if (!m_reader.hasError())
            return;
        m_result.m_elements.clear();
        m_result.m_preferenceSet.clear();
        m_result.m_file.state = PR_XmlFile::NotXml;
        m_result.m_file.error = m_reader.errorString();
        m_result.m_file.errorLine = m_reader.lineNumber();
        m_result.m_file.errorColumn = m_reader.columnNumber();
    }

private:
    void begin()
    {
        PR_ItemElement element;
        element.tag = sharedName(m_reader.qualifiedName());
        QXmlStreamAttributes const attributes = m_reader.attributes();
        for (QXmlStreamAttribute const &attribute : attributes) {
            if (attribute.qualifiedName() == kId)
                element.id = QLatin1String("") + attribute.value();
            else
                element.add(sharedName(attribute.qualifiedName()), attribute.value().toString());
        }
        if (!m_hasSet && element.id == QLatin1String("PREFERENCE_SET") && element.tag == QLatin1String("string")) {
            m_hasSet = true;
            m_result.m_preferenceSet = element.attribute(kValue);
        }
        if (m_depth == 0) {
            m_result.m_document.appendChild(element.toDom(m_result.m_document));
        } else if (m_depth == 1) {
            m_result.m_elements.push_back(
                { std::move(element), {}, int(m_reader.lineNumber()), int(m_reader.columnNumber()) });
            m_node = QDomNode();
        } else {
            m_node = node().appendChild(element.toDom(m_result.m_document));
        }
    }

    // Text and the like, as a document has it: blanks alone are no node of it.
    void addContent()
    {
        if (m_depth < 2)
            return;
        Element &element = m_result.m_elements.back();
        QString const text = m_reader.text().toString();
        QDomDocument &document = m_result.m_document;
        if (m_reader.isCDATA() && element.dom.isNull() && !element.content.hasCdata) {
            element.content.hasCdata = true;
            element.content.cdata = text;
        } else if (m_reader.isCDATA()) {
            node().appendChild(document.createCDATASection(text));
        } else if (m_reader.isCharacters() && !text.trimmed().isEmpty()) {
            node().appendChild(document.createTextNode(text));
        } else if (m_reader.isComment()) {
            node().appendChild(document.createComment(text));
        } else if (m_reader.isProcessingInstruction()) {
            node().appendChild(document.createProcessingInstruction(
                m_reader.processingInstructionTarget().toString(), m_reader.processingInstructionData().toString()));
        } else if (m_reader.isEntityReference()) {
            node().appendChild(document.createEntityReference(m_reader.name().toString()));
        }
    }

    // The place in the DOM of the current element, which then must have one.
    QDomNode node()
    {
        Element &element = m_result.m_elements.back();
        if (element.dom.isNull()) {
            element.dom = element.content.toDom(m_result.m_document);
            m_result.m_document.documentElement().appendChild(element.dom);
        }
        if (m_node.isNull())
            m_node = element.dom;
        return m_node;
    }

    QXmlStreamReader m_reader;
    PR_UserFile &m_result;
    int m_depth = 0; // of the elements that are open
    QDomNode m_node; // the innermost of them; null unless the current element has a DOM
    bool m_hasSet = false;
};

bool PR_UserFile::offer(Element const &element, PR_PrefItem &item) const
{
    if (!element.dom.isNull())
        return item.loadXml(element.dom);
    QDomDocument document;
    QDomNode root = document.appendChild(document.importNode(m_document.documentElement(), false));
    return item.loadXml(root.appendChild(element.content.toDom(document)).toElement());
}

PR_UserFile::PR_UserFile(QString const &path)
    : m_file(PR_XmlFile::read(path))
{
    if (m_file.state == PR_XmlFile::Read)
        Parser(m_file.bytes, *this).parse();
    m_file.bytes.clear();
}
