#ifndef PR_XMLTREE_P_H
#define PR_XMLTREE_P_H

#include "PR_Element_p.h"

#include <memory>

/*! Owns a light tree. What is added to it is copied. */
class PR_XmlTree {
public:
    /*! An empty tree; \a sizeHint is about the number of bytes that it will take. */
    explicit PR_XmlTree(size_t sizeHint = 1024);
    PR_XmlTree(PR_XmlTree &&) noexcept;
    PR_XmlTree &operator=(PR_XmlTree &&) noexcept;
    ~PR_XmlTree();

    PR_Element *root() const { return m_root; }

    /*! Adds an element to a parent; without one it becomes the root. */
    PR_Element *addElement(
        PR_Element *parent, QStringView name, PR_Attribute const *attributes = nullptr, int count = 0);
    /*! Adds the element of an item: its value in the attribute "value" or, with \a asCdata, in the "cdata" form. */
    PR_Element *addItem(PR_Element *parent, QStringView tag, QStringView id, QStringView value, bool asCdata = false);
    /*! Adds a copy of an element with all that it contains. */
    PR_Element *addCopy(PR_Element *parent, PR_Element const &element);
    /*! Adds a node of another kind. */
    void addText(PR_Element *parent, PR_Node::Kind kind, QStringView name, QStringView text);

private:
    class Arena;

    std::unique_ptr<Arena> m_arena;
    PR_Element *m_root = nullptr;
};

#endif
