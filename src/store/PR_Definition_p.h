#ifndef PR_DEFINITION_P_H
#define PR_DEFINITION_P_H

#include "PR_XmlFile_p.h"

#include <QDomElement>

#include <memory>

class PR_PrefItem;

/*! A file of definitions, and which one it is of an installation's. */
struct PR_DefinitionFile {
    enum Layer { Main, Set, Override };

    Layer layer = Main;
    PR_XmlFile xml;
};

/*! One definition of a preference, where it stands. */
struct PR_Definition {
    /*! The item that it defines, its lock included; null when there is no such type. */
    std::unique_ptr<PR_PrefItem> createItem() const;
    /*! Gives the descriptions of an item, still those of a document, memory of their own. Done once all items are
       there, it keeps items contiguous in memory. */
    static void detachTexts(PR_PrefItem *item);
    /*! Whether a definition takes the place of the item that earlier ones gave its key: a lock stays. */
    static bool mayReplace(PR_PrefItem const *held);

    PR_DefinitionFile const *file = nullptr;
    QDomElement category;
    QDomElement element;
};

#endif
