#ifndef SOURCETEXT_H
#define SOURCETEXT_H

#include "PR_Definition_p.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>
#include <vector>

/*! A place in a file, line and column from 1; 0 for the file as a whole. */
struct Place {
    int line = 0;
    int column = 0;
};

/*! The text of an XML file, to find places in it: parsers only tell where a tag ends. Decoded when it is first asked.
 */
class SourceText {
public:
    struct Tag {
        qsizetype begin = 0;
        qsizetype end = 0;
    };

    explicit SourceText(QByteArray bytes);

    /*! The tag that ends behind \a column characters of a line. */
    Tag tagEndingAt(int line, int column) const;
    Place placeOf(Tag const &tag) const;
    /*! The place of an attribute in a tag; that of the tag when it has no such attribute. */
    Place placeOf(Tag const &tag, QString const &attribute) const;

private:
    struct Lines {
        QString text;
        std::vector<qsizetype> starts;
    };
    Lines const &lines() const;
    Place placeOf(qsizetype position) const;

    QByteArray m_bytes;
    mutable std::optional<Lines> m_lines;
};

/*! The texts of files, each read when it is first asked for. */
class SourceTextCache {
public:
    SourceText const &of(QString const &path);

    Place placeOf(PR_Definition const &definition);
    /*! The same as "FILE:LINE". */
    QString placeText(PR_Definition const &definition);

private:
    std::map<QString, SourceText> m_texts;
};

#endif
