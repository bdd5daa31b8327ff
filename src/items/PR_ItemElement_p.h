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

    /*! The element \a tag of the item \a id. */
    static PR_ItemElement of(QString const &tag, QString const &id);
    /*! The same, with a value: in the attribute "value" or, with \a asCdata, in the "cdata" form. */
    static PR_ItemElement of(QString const &tag, QString const &id, QString const &value, bool asCdata = false);
    /*! What an element of a document says; children of it but a leading CDATA section are left out. */
    static PR_ItemElement of(QDomElement const &dom);

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
    QString id; /*!< Null when there is no such attribute. */
    QVarLengthArray<Attribute, 4> attributes;
    bool hasCdata = false; /*!< Whether the first child is a CDATA section. */
    QString cdata;
};

/*! How the store loads and saves the library's own items without a document. */
class PR_ItemElementAccess {
public:
    /*! As loadXml() of the item. */
    template <class Item> static bool load(Item &item, PR_ItemElement const &element)
    {
        return item.loadElement(element);
    }
    /*! The element that saveXml() of the item appends. */
    template <class Item> static PR_ItemElement of(Item const &item) { return item.toElement(); }
};

#endif
