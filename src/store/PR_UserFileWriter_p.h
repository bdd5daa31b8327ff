#ifndef PR_USERFILEWRITER_P_H
#define PR_USERFILEWRITER_P_H

#include "PR_Element_p.h"

#include <QString>

/*! The text of a user's XML file: UTF-8 with a declaration, indented by one blank a level as a document is.

    Attributes are written in the order of the tree, so that equal trees give equal bytes. A reader gets each value
   back: characters that XML cannot hold are dropped, an element without a valid name is written as "string", and a text
   that a CDATA section would not give back goes into the attribute "value". */
class PR_UserFileWriter {
public:
    /*! The text without control characters, lone surrogates, U+FFFE and U+FFFF. */
    static QString xmlText(QString const &text);

    QByteArray bytesOf(PR_Element const &root);

    /*! Whether something was left out because no reader would take the file with it: elements nested too deeply, or too
        many attributes of one element. */
    bool isCutShort() const { return m_isCutShort; }

private:
    void appendAttributes(PR_Attribute const *attributes, int count);
    void appendElement(PR_Element const &element, int depth);
    void appendContent(PR_Element const &element, int depth);

    QString m_text;
    bool m_isCutShort = false;
};

#endif
