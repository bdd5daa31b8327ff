#ifndef XMLTEXT_H
#define XMLTEXT_H

#include <QString>

#include <vector>

/*! The text of a well-formed file, to find places in it that the elements of its tree do not know. Where a document
   type of the file's own has entities, elements may come from there: their places are anywhere. */
struct XmlText {
    struct Span {
        qsizetype begin;
        qsizetype end;
    };
    /*! Where the parts of an element begin and end. */
    struct Parts {
        Span startTag; /*!< The whole of an element that is "<x/>". */
        Span endTag; /*!< Empty for such a one. */
    };

    explicit XmlText(QString whole);

    /*! The position of a line and a column, both from 1. */
    qsizetype positionOf(int line, int column) const;
    /*! An attribute, from its name to its last quote, in the tag at a position; empty, and there, when the tag has no
        such attribute. */
    Span attributeOf(qsizetype tag, QString const &attribute) const;
    /*! The parts of the element whose start tag is at a position. */
    Parts partsOf(qsizetype tag) const;

    QString text;
    std::vector<qsizetype> lineStarts;

private:
    qsizetype behindMarkup(qsizetype at) const;
};

#endif
