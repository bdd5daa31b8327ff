#ifndef PR_ITEMELEMENT_P_H
#define PR_ITEMELEMENT_P_H

#include <QString>
#include <QVarLengthArray>

#include <utility>

class QDomDocument;
class QDomElement;

/*! One item element of a user's file, apart from any document: a document costs ten times the memory, and more time to
    build than all else in a load. */
struct PR_ItemElement {
    using Attribute = std::pair<QString, QString>;

    /*! The element \a tag of the item \a id. A tag that is no ASCII name gives "string": the value comes back under its
        key whatever the element's name. Characters that XML cannot hold are dropped. */
    static PR_ItemElement of(QString const &tag, QString const &id);
    /*! The same, with a value: in the attribute "value" or, with \a asCdata, in the "cdata" form, unless a reader of
        that would not get it back. Characters that XML cannot hold are dropped. */
    static PR_ItemElement of(QString const &tag, QString const &id, QString const &value, bool asCdata = false);
    /*! What an element of a document says, as it stands; further children of it are left out. */
    static PR_ItemElement of(QDomElement const &dom);

    /*! The text without control characters, lone surrogates, U+FFFE and U+FFFF. */
    static QString xmlText(QString const &text);

    /*! The same as an element of a document, which has no place in it yet. */
    QDomElement toDom(QDomDocument &document) const;
    /*! Appends the element to the root of a document. */
    void appendTo(QDomDocument *document) const;

    /*! The text of an attribute other than "id"; empty when there is none. */
    QString attribute(QString const &name) const;
    /*! The attribute "value", or the text in the "cdata" form. */
    QString value() const;
    /*! Adds an attribute; keep them in ascending order of their names. */
    void add(QString const &name, QString const &text) { attributes.append({ name, text }); }

    Attribute const *find(QString const &name) const;

    QString tag;
    QString id;
    QVarLengthArray<Attribute, 4> attributes;
    bool hasCdata = false; /*!< Whether the first child is a CDATA section. */
    QString cdata;
};

#endif
