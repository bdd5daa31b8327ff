#ifndef PR_XMLREADER_P_H
#define PR_XMLREADER_P_H

#include "PL_InputFile_p.h"
#include "PR_XmlTree_p.h"

#include <limits>

/*! An XML file, read as a whole into a light tree, or the reason why not.

    The tree is what a document reader makes of the file: blanks alone are no node, comments, instructions and
    references that stay unresolved are nodes. One thing differs: a byte order mark wins over an encoding that the
    file declares.

    Parsers take time and memory out of proportion for some texts: time grows with the square of the nesting depth and
    of the attributes of an element, entities multiply a text. No one writes such files of preferences; they count as
    not XML. */
struct PR_XmlFile {
    enum State { Read, CannotOpen, NotXml };

    static constexpr qsizetype MaximumDepth = 256; /*!< Of nested elements. */
    static constexpr qsizetype MaximumAttributes = 256; /*!< Of one element. */
    static constexpr qsizetype MaximumSubset = 16 * 1024; /*!< Bytes of a document type of the file's own. */
    static constexpr qsizetype AnyNumber = std::numeric_limits<qsizetype>::max();

    static PR_XmlFile read(QString const &path, qsizetype maximumElements = AnyNumber);
    static PR_XmlFile parse(QByteArray const &bytes, qsizetype maximumElements = AnyNumber);

    State state = CannotOpen;
    QString path;
    PL_FileVersion version;
    QByteArray text; /*!< What was parsed, in UTF-8. */
    PR_XmlTree tree; /*!< Without a root unless the state is Read. */
    qsizetype elementCount = 0;
    QString error; /*!< To show, in the language of the host. */
    int errorLine = 0; /*!< From 1; 0 when the error has no place. */
    int errorColumn = 0; /*!< From 1. */
};

#endif
