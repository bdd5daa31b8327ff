#ifndef DEFINITIONTEXT_H
#define DEFINITIONTEXT_H

#include "XmlText.h"

#include "PR_XmlReader_p.h"

#include <optional>
#include <vector>

/*! A file of definitions that is changed in its text: whatever a change is not about stays byte for byte as it is. Each
    change makes the elements anew. What cannot be done is thrown as a Failure. */
class DefinitionText {
public:
    struct Attribute {
        QString name;
        std::optional<QString> value; /*!< None: the element is to have no such attribute. */
    };

    /*! Reads a file. One that is not there begins as a text that defines nothing. */
    explicit DefinitionText(QString const &path);

    /*! What a reader makes of the text. Unless it could be read, nothing is found in it. */
    PR_XmlFile const &file() const { return m_file; }
    /*! The definitions of a key, in the order of the text. */
    std::vector<PR_Element const *> of(QString const &key) const;

    /*! Adds a copy of a definition at the end of a category of the same name and conditions. */
    void add(PR_Element const &definition);
    /*! Gives the same attributes to all definitions of a key. */
    void change(QString const &key, std::vector<Attribute> const &attributes);
    /*! Takes out all definitions of a key, and each category that had nothing else. */
    void remove(QString const &key);

    /*! Replaces the file, unless the text is the one that was read. */
    void save() const;

private:
    void parse(QByteArray const &text);
    qsizetype beginOf(PR_Element const &element) const { return m_text.positionOf(element.line, element.column); }
    void addAtEnd(PR_Element const &parent, QString lines);
    void set(qsizetype tag, Attribute const &attribute);
    void erase(PR_Element const &element);

    QByteArray m_original; // null where there was no file
    QByteArray m_mark; // the byte order mark, which is no part of the text
    XmlText m_text{ {} };
    QString m_lineEnd;
    PR_XmlFile m_file;
};

#endif
