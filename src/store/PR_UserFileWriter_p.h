#ifndef PR_USERFILEWRITER_P_H
#define PR_USERFILEWRITER_P_H

#include <QString>

class QDomElement;
class QDomNode;
struct PR_ItemElement;

/*! The text of a user's XML file: UTF-8 with a declaration, indented by one blank a level as a document is.

    Within an element "id" comes first and the other attributes follow by name, so that equal values give equal bytes.
    A reader gets each value back: characters that XML cannot hold are dropped, an element without a valid name is
    written as "string", and a text that a CDATA section would not give back goes into the attribute "value". */
class PR_UserFileWriter {
public:
    /*! The text without control characters, lone surrogates, U+FFFE and U+FFFF. */
    static QString xmlText(QString const &text);

    void add(PR_ItemElement const &element);
    /*! Adds the attributes of a root and all that it contains. */
    void addContentOf(QDomElement const &root);

    /*! Whether something was left out because no reader would take the file with it: elements nested too deeply, or too
        many attributes of one element. */
    bool isCutShort() const { return m_isCutShort; }
    QByteArray bytes() const;

private:
    void appendAttributes(QString &out, PR_ItemElement const &element);
    void appendItem(PR_ItemElement const &element);
    void appendElement(QDomElement const &element, int depth);
    void appendNode(QDomNode const &node, int depth);

    QString m_rootAttributes;
    QString m_content; // of the root
    bool m_isCutShort = false;
};

#endif
