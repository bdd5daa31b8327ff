#ifndef PR_DEFINITIONTREE_P_H
#define PR_DEFINITIONTREE_P_H

#include "PR_Definition_p.h"

#include <functional>
#include <vector>

/*! The definition files of an installation as one tree: the main file, then the preference set, then the facility's
    override. A later definition of a key is meant to replace an earlier one. Each file keeps its own document, in which
    elements know their lines. Needs no store. */
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
    explicit PR_DefinitionTree(PR_XmlFile mainFile);

    /*! Adds the further files: the preference set, unless its path is empty, and the override. One that is missing or
        cannot be read defines nothing. */
    void appendLayers(QString const &setPath);

    /*! Removes what the host's features exclude. */
    void trim();

    enum Extent {
        Admitted, /*!< What platform and mode admit. */
        Everything
    };
    using Visitor = std::function<void(PR_Definition const &definition)>;
    /*! Visits the item elements in the order of the files and of their documents. */
    void visit(Extent extent, Visitor const &visitor) const;

    std::vector<PR_DefinitionFile> const &files() const { return m_files; }

private:
    void append(PR_DefinitionFile::Layer layer, QString const &path);

    std::vector<PR_DefinitionFile> m_files;
};

#endif
