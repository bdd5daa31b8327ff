#ifndef PR_XMLSCAN_P_H
#define PR_XMLSCAN_P_H

#include <QByteArray>

/*! A look at the bytes of an XML file before it is parsed.

    Parsers take time and memory out of proportion for some texts: time grows with the square of the nesting depth and
   of the attributes of one element, entities multiply a text, an element costs a document a hundred times its bytes. No
   one writes such files of preferences; they are turned away by a scan that takes about a millisecond a megabyte. */
class PR_XmlScan {
public:
    static constexpr qsizetype maximumDepth = 256; /*!< Of nested elements. */
    static constexpr qsizetype maximumAttributes = 256; /*!< Of one element. */

    /*! Scans the bytes, whose encoding need not be UTF-8. */
    explicit PR_XmlScan(QByteArray const &bytes);

    /*! Whether the text can be parsed in reasonable time. Nothing that a store saves is refused. */
    bool isReasonable() const;
    /*! Whether the encoding that the file declares is one that the parsers read as the scan did. */
    bool isEncodingKnown() const { return m_encodingIsPlain; }
    qsizetype elementCount() const { return m_elements; }

private:
    void scan(QByteArray const &text);
    qsizetype scanTag(QByteArray const &text, qsizetype at);
    qsizetype scanDeclaration(QByteArray const &text, qsizetype at);

    qsizetype m_size = 0;
    qsizetype m_elements = 0;
    qsizetype m_depth = 0;
    qsizetype m_maxDepth = 0;
    qsizetype m_maxAttributes = 0;
    bool m_hasInternalSubset = false;
    bool m_encodingIsPlain = true;
};

#endif
