#ifndef PR_ELEMENT_P_H
#define PR_ELEMENT_P_H

#include <QStringView>

struct PR_Element;

/*! Name of the attribute that tells of a value in a CDATA section. */
inline constexpr QStringView kCdata = u"cdata";

/*! A node of a light tree: nodes and texts lie in the memory of their PR_XmlTree and end with it. */
struct PR_Node {
    enum Kind : quint8 { Element, Text, Cdata, Comment, Instruction, Reference };

    PR_Node *next = nullptr;
    PR_Element *parent = nullptr;
    QStringView name; /*!< The tag of an element, the target of an instruction, the name of a reference. */
    Kind kind = Element;
};

struct PR_TextNode : PR_Node {
    QStringView text;
};

struct PR_Attribute {
    QStringView name;
    QStringView value;
};

/*! An element with its attributes and nodes. It costs a tenth of the memory of a QDomElement, and less of the time. */
struct PR_Element : PR_Node {
    /*! The value of an attribute; null when there is none. */
    QStringView attribute(QStringView wanted) const
    {
        for (int i = 0; i < attributeCount; ++i) {
            if (attributes[i].name == wanted)
                return attributes[i].value;
        }
        return {};
    }
    bool hasAttribute(QStringView wanted) const { return !attribute(wanted).isNull(); }
    QStringView id() const { return attribute(u"id"); }
    /*! The first node when it is a CDATA section, else null. */
    PR_TextNode const *section() const
    {
        return firstNode && firstNode->kind == Cdata ? static_cast<PR_TextNode const *>(firstNode) : nullptr;
    }
    /*! The value of an item: the attribute "value" or, in an element with the attribute "cdata", its section. */
    QStringView value() const
    {
        PR_TextNode const *const leading = section();
        return leading && hasAttribute(kCdata) ? leading->text : attribute(u"value");
    }

    /*! \name The elements among the nodes, in order; null behind the last one */
    /*!\{*/
    PR_Element *firstElement() const { return elementFrom(firstNode); }
    PR_Element *nextElement() const { return elementFrom(next); }
    /*!\}*/

    PR_Attribute const *attributes = nullptr;
    PR_Node *firstNode = nullptr;
    PR_Node *lastNode = nullptr;
    int attributeCount = 0;
    int line = 0; /*!< Where its tag begins, from 1; 0 for an element that stands in no file. */
    int column = 0; /*!< In that line, from 1. */
    bool isExcluded = false; /*!< By a condition on a feature. */
    quint8 source = 0; /*!< Which file it comes from, for those who join trees. */

private:
    static PR_Element *elementFrom(PR_Node *node)
    {
        while (node && node->kind != Element)
            node = node->next;
        return static_cast<PR_Element *>(node);
    }
};

/*! The elements among the nodes of an element, in order, for a range-based for; with a name, only those so named. */
class PR_Elements {
public:
    explicit PR_Elements(PR_Element const &parent, QStringView name = {})
        : PR_Elements(&parent, name)
    {
    }
    /*! Null has none. */
    explicit PR_Elements(PR_Element const *parent, QStringView name = {})
        : m_name(name)
    {
        moveTo(parent ? parent->firstElement() : nullptr);
    }

    PR_Elements begin() const { return *this; }
    PR_Elements end() const { return PR_Elements(nullptr); }
    PR_Element &operator*() const { return *m_element; }
    void operator++() { moveTo(m_element->nextElement()); }
    bool operator!=(PR_Elements const &other) const { return m_element != other.m_element; }

private:
    void moveTo(PR_Element *element)
    {
        while (element && !m_name.isNull() && element->name != m_name)
            element = element->nextElement();
        m_element = element;
    }

    PR_Element *m_element = nullptr;
    QStringView m_name;
};

#endif
