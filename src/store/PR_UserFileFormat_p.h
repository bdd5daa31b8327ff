#ifndef PR_USERFILEFORMAT_P_H
#define PR_USERFILEFORMAT_P_H

#include <QByteArray>

class QDomDocument;

/*! The text form of a user's XML file. */
namespace PR_UserFileFormat {
/*! The bytes of a document: UTF-8 with a declaration, one blank of indentation per level. Within an element "id" comes
    first and the other attributes follow by name, so that equal values give equal bytes. What XML cannot hold is left
    out of the text in which it stands. */
QByteArray toBytes(QDomDocument const &document);
} // namespace PR_UserFileFormat

#endif
