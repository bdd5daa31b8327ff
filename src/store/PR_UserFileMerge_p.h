#ifndef PR_USERFILEMERGE_P_H
#define PR_USERFILEMERGE_P_H

#include "PR_XmlTree_p.h"

#include <QHash>
#include <QStringList>

#include <vector>

/*! What becomes of a user's file that several stores write.

    Each side is compared with itself, as values pass through texts: the file with what it was when it was last read or
    written, the elements that a store would write with those that it would have written right after that. The unit is a
    key: all elements of that id, in order. A key that the store did not change keeps the elements that the file has
   now; one that it changed gets the store's own, or none. */
class PR_UserFileMerge {
public:
    /*! Roots of elements, which must live as long; null stands for a file that is not there. */
    struct Sides {
        PR_Element const *base = nullptr; /*!< The file when it was last read or written. */
        PR_Element const *theirs = nullptr; /*!< The file now. */
        PR_Element const *ownBase = nullptr; /*!< What the store would have written right after that. */
        PR_Element const *own = nullptr; /*!< What it would write now. */
        bool isBaseBackup = false; /*!< The base was read from the backup, as the file was damaged. */
    };
    explicit PR_UserFileMerge(Sides const &sides);

    /*! Whether two elements have the same name, attributes in the same order, and content. */
    static bool areEqual(PR_Element const &a, PR_Element const &b);

    /*! Whether the store changed a key. */
    bool isOwnChange(QString const &key) const;
    /*! The keys that others changed in the file, and the store did not. */
    QStringList foreignChanges() const;
    /*! The elements of a key in the file now. */
    std::vector<PR_Element const *> const &theirs(QString const &key) const { return groupOf(m_theirs, key); }
    /*! The elements to write, those of the file in its order. */
    std::vector<PR_Element const *> merged() const;

private:
    using Group = std::vector<PR_Element const *>;
    struct Side {
        QHash<QString, Group> groups;
        QStringList keys; // in the order of their first elements
    };

    static Side sideOf(PR_Element const *root);
    static Group const &groupOf(Side const &side, QString const &key);
    static bool areSame(Group const &a, Group const &b);

    bool m_isGone; // the file
    bool m_isBaseBackup;
    PR_Element const *m_order; // whose elements give the order
    Side m_base;
    Side m_theirs;
    Side m_ownBase;
    Side m_own;
};

#endif
