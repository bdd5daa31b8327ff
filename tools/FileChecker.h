#ifndef FILECHECKER_H
#define FILECHECKER_H

#include "Finding.h"

#include <vector>

class PR_FontItem;
class PR_PrefItem;
class QDomElement;
class QDomNode;
struct PR_DefinitionFile;
struct PR_ItemElement;
struct PR_XmlFile;

/*! What the checks of a file of definitions and of a user's file have in common. */
class FileChecker {
public:
    std::vector<Finding> takeFindings();

protected:
    enum FileKind { DefinitionFile, UserFile };

    FileChecker(QString file, FileKind kind, SourceText const &source);
    ~FileChecker() = default;

    /*! The element that the next findings are about. */
    void enter(int line, int column, QString const &key);
    void enter(QDomElement const &element);

    /*! Adds a finding about the element, placed at one of its attributes when there is such a one. */
    void report(Rule rule, QString const &text, QString const &attribute = {}, QString const &suggestion = {});
    /*! There is text in an element that is to hold elements alone. */
    void reportText(QString const &tag);
    void reportUnreadable(PR_XmlFile const &xml);

    /*! \name Checks of the element */
    /*!\{*/
    void checkRootName(QString const &tag);
    void checkAttributes(PR_ItemElement const &element, QStringList const &known);
    void checkContent(QDomElement const &element, bool mayHoldCdata);
    void checkChannels(PR_ItemElement const &element);
    void checkRange(PR_PrefItem const &item);
    void checkFont(PR_FontItem const &item, QString const &name);
    /*! Whether a text gave a shortcut, by the item that read it. */
    void checkShortcut(PR_PrefItem const &item, QString const &text);
    /*!\}*/

    Place place() const { return m_source.placeOf(m_tag); }

private:
    Q_DISABLE_COPY_MOVE(FileChecker)

    QString const m_file;
    FileKind const m_kind;
    SourceText const &m_source;
    SourceText::Tag m_tag;
    QString m_key;
    std::vector<Finding> m_findings;
};

/*! Text that no element's value is. */
bool isIgnoredText(QDomNode const &node);

/*! What the definition of an item of a type, or a user's element of it, has for a value. */
QStringList valueAttributes(QString const &type);

#endif
