#include "PR_XmlTree_p.h"

#include <cstring>
#include <memory_resource>
#include <vector>

class PR_XmlTree::Arena {
public:
    explicit Arena(size_t sizeHint)
        : m_memory(sizeHint)
    {
    }

    template <class T> T *make() { return new (m_memory.allocate(sizeof(T), alignof(T))) T; }

    QStringView keep(QStringView text)
    {
        if (text.isEmpty())
            return text.isNull() ? QStringView() : QStringView(u"");
        auto const size = size_t(text.size()) * sizeof(QChar);
        return { static_cast<QChar const *>(std::memcpy(m_memory.allocate(size, alignof(QChar)), text.data(), size)),
            text.size() };
    }

    // A name, which other elements probably have too.
    QStringView keepName(QStringView name)
    {
        for (QStringView const known : m_names) {
            if (known == name)
                return known;
        }
        QStringView const kept = keep(name);
        if (m_names.size() < 64)
            m_names.push_back(kept);
        return kept;
    }

    PR_Attribute *keep(PR_Attribute const *attributes, int count)
    {
        auto *const kept =
            static_cast<PR_Attribute *>(m_memory.allocate(sizeof(PR_Attribute) * size_t(count), alignof(PR_Attribute)));
        for (int i = 0; i < count; ++i)
            new (kept + i) PR_Attribute{ keepName(attributes[i].name),
                attributes[i].value.isNull() ? QStringView(u"") : keep(attributes[i].value) };
        return kept;
    }

private:
    std::pmr::monotonic_buffer_resource m_memory;
    std::vector<QStringView> m_names;
};

PR_XmlTree::PR_XmlTree(size_t sizeHint)
    : m_arena(std::make_unique<Arena>(sizeHint))
{
}

PR_XmlTree::PR_XmlTree(PR_XmlTree &&) noexcept = default;
PR_XmlTree &PR_XmlTree::operator=(PR_XmlTree &&) noexcept = default;
PR_XmlTree::~PR_XmlTree() = default;

namespace {
void append(PR_Element *parent, PR_Node *node)
{
    node->parent = parent;
    if (!parent)
        return;
    (parent->lastNode ? parent->lastNode->next : parent->firstNode) = node;
    parent->lastNode = node;
}
} // namespace

PR_Element *PR_XmlTree::addElement(PR_Element *parent, QStringView name, PR_Attribute const *attributes, int count)
{
    auto *const element = m_arena->make<PR_Element>();
    element->name = m_arena->keepName(name);
    element->attributes = count > 0 ? m_arena->keep(attributes, count) : nullptr;
    element->attributeCount = count;
    append(parent, element);
    if (!parent)
        m_root = element;
    return element;
}

PR_Element *PR_XmlTree::addItem(PR_Element *parent, QStringView tag, QStringView id, QStringView value, bool asCdata)
{
    PR_Attribute const attributes[] = { { u"id", id },
        asCdata ? PR_Attribute{ kCdata, u"true" } : PR_Attribute{ u"value", value } };
    PR_Element *const element = addElement(parent, tag, attributes, 2);
    if (asCdata)
        addText(element, PR_Node::Cdata, {}, value);
    return element;
}

void PR_XmlTree::addText(PR_Element *parent, PR_Node::Kind kind, QStringView name, QStringView text)
{
    auto *const node = m_arena->make<PR_TextNode>();
    node->kind = kind;
    node->name = m_arena->keepName(name);
    node->text = m_arena->keep(text);
    append(parent, node);
}

PR_Element *PR_XmlTree::addCopy(PR_Element *parent, PR_Element const &element)
{
    PR_Element *const copy = addElement(parent, element.name, element.attributes, element.attributeCount);
    for (PR_Node const *node = element.firstNode; node; node = node->next) {
        if (node->kind == PR_Node::Element)
            addCopy(copy, static_cast<PR_Element const &>(*node));
        else
            addText(copy, node->kind, node->name, static_cast<PR_TextNode const &>(*node).text);
    }
    return copy;
}
