#ifndef XMLOUTLINE_H
#define XMLOUTLINE_H

#include <QString>

class QByteArray;

/*! What the root of an XML file tells of the kind of the file. A file that is no XML has none, or is told of as far as
    it goes. */
struct XmlOutline {
    explicit XmlOutline(QByteArray const &bytes);

    QString root; /*!< The root's tag. */
    int rootLine = 0; /*!< Where the root's start tag ends, as SourceText::tagEndingAt() takes it. */
    int rootColumn = 0;
    bool hasCategories = false; /*!< Also an element inside of another: a user's values stand in the root itself. */
    bool hasText = false; /*!< Text in the root itself. */
};

/*! The root that every file of ours has. A loader takes any. */
QString rootName();

#endif
