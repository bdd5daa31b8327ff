#ifndef PR_DEFINITIONTREE_P_H
#define PR_DEFINITIONTREE_P_H

#include "PR_XmlFile_p.h"

#include <QDomDocument>

#include <functional>

/*! The definition files of an installation, merged into one tree: the main file, then the preference set, then the
    facility's override. A later definition of a key is meant to replace an earlier one. Needs no store. */
class PR_DefinitionTree {
public:
    /*! \name Paths of the definition files
        By the flavour of the host. A set's \a name is taken as it is. */
    /*!\{*/
    static QString mainPath();
    static QString localPath();
    static QString overridePath();
    static QString setPath(QString const &name);
    /*!\}*/

    /*! Begins the tree with a main file that was read. */
    explicit PR_DefinitionTree(PR_XmlFile const &mainFile);

    /*! Adds the children of the root of a further file; one that is missing or cannot be read adds nothing. */
    void append(QString const &path);

    /*! Removes what the host's features exclude. */
    void trim();

    using Visitor = std::function<void(QDomElement const &category, QDomElement const &item)>;
    /*! Visits the item elements that platform and mode admit, in document order. */
    void visit(Visitor const &visitor) const;

private:
    QDomDocument m_document;
};

#endif
