#ifndef PR_USERFILEWRITER_P_H
#define PR_USERFILEWRITER_P_H

#include <QString>

class QDomElement;
struct PR_ItemElement;

/*! The text of a user's XML file: UTF-8 with a declaration, an element a line, indented by one blank.

    Within an element "id" comes first and the other attributes follow by name, so that equal values give equal bytes.
    What XML cannot hold is left out of the text in which it stands. */
class PR_UserFileWriter {
public:
    void add(PR_ItemElement const &element);
    /*! Adds an element with all that it contains. */
    void add(QDomElement const &element);

    QByteArray bytes() const;

private:
    void appendStart(PR_ItemElement const &element);
    void append(QDomElement const &element);

    QString m_elements;
};

#endif
