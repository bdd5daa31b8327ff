#include "PR_ElementDom_p.h"

#include "PR_PrefConstants.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {
QDomElement copyOf(QDomDocument &document, PR_Element const &element)
{
    QDomElement dom = document.createElement(element.name.toString());
    for (int i = 0; i < element.attributeCount; ++i)
        dom.setAttribute(element.attributes[i].name.toString(), element.attributes[i].value.toString());
    return dom;
}

QDomNode copyOf(QDomDocument &document, PR_TextNode const &node)
{
    QString const text = node.text.toString();
    switch (node.kind) {
    case PR_Node::Cdata:
        return document.createCDATASection(text);
    case PR_Node::Comment:
        return document.createComment(text);
    case PR_Node::Instruction:
        return document.createProcessingInstruction(node.name.toString(), text);
    case PR_Node::Reference:
        return document.createEntityReference(node.name.toString());
    case PR_Node::Text:
    case PR_Node::Element:
        break;
    }
    return document.createTextNode(text);
}

// An element with its attributes alone.
PR_Element *addHead(PR_XmlTree &tree, PR_Element *parent, QDomElement const &dom)
{
    std::vector<std::pair<QString, QString>> texts;
    QDomNamedNodeMap const attributes = dom.attributes();
    for (int i = 0; i < attributes.size(); ++i)
        texts.emplace_back(attributes.item(i).nodeName(), attributes.item(i).nodeValue());
    std::sort(texts.begin(), texts.end(), [](auto const &a, auto const &b) {
        bool const isId = a.first == kId;
        return isId != (b.first == kId) ? isId : a.first < b.first;
    });
    std::vector<PR_Attribute> views;
    for (auto const &[name, value] : texts)
        views.push_back({ name, value });
    return tree.addElement(parent, dom.tagName(), views.data(), int(views.size()));
}

void addText(PR_XmlTree &tree, PR_Element *parent, QDomNode const &node)
{
    if (node.isCDATASection())
        tree.addText(parent, PR_Node::Cdata, {}, node.nodeValue());
    else if (node.isText())
        tree.addText(parent, PR_Node::Text, {}, node.nodeValue());
    else if (node.isComment())
        tree.addText(parent, PR_Node::Comment, {}, node.nodeValue());
    else if (node.isProcessingInstruction())
        tree.addText(parent, PR_Node::Instruction, node.nodeName(), node.nodeValue());
    else if (node.isEntityReference())
        tree.addText(parent, PR_Node::Reference, node.nodeName(), {});
}
} // namespace

QDomDocument PR_ElementDom::newDocument()
{
    QDomDocument document;
    (void)document.createDocumentFragment(); // without a node it is null, and so are the copies of it
    return document;
}

PR_ElementDom::Placed PR_ElementDom::toDom(PR_Element const &element)
{
    std::vector<PR_Element const *> around;
    for (PR_Element const *outer = element.parent; outer; outer = outer->parent)
        around.push_back(outer);
    Placed placed{ newDocument(), {} };
    QDomNode parent = placed.document;
    for (auto outer = around.rbegin(); outer != around.rend(); ++outer)
        parent = parent.appendChild(copyOf(placed.document, **outer));
    placed.element = append(placed.document, parent, element);
    return placed;
}

QDomElement PR_ElementDom::append(QDomDocument &document, QDomNode parent, PR_Element const &element)
{
    QDomElement const copy = parent.appendChild(copyOf(document, element)).toElement();
    // Without recursion: a file decides how deep its elements are nested.
    QDomNode place = copy;
    for (PR_Node const *node = element.firstNode; node;) {
        if (node->kind == PR_Node::Element) {
            auto const *const child = static_cast<PR_Element const *>(node);
            QDomNode const added = child->isExcluded ? QDomNode() : place.appendChild(copyOf(document, *child));
            if (child->firstNode && !child->isExcluded) {
                place = added;
                node = child->firstNode;
                continue;
            }
        } else {
            place.appendChild(copyOf(document, static_cast<PR_TextNode const &>(*node)));
        }
        while (!node->next && node->parent != &element) {
            node = node->parent;
            place = place.parentNode();
        }
        node = node->next;
    }
    return copy;
}

PR_Element *PR_ElementDom::add(PR_XmlTree &tree, PR_Element *parent, QDomElement const &dom)
{
    PR_Element *const copy = addHead(tree, parent, dom);
    PR_Element *place = copy;
    for (QDomNode node = dom.firstChild(); !node.isNull();) {
        if (node.isElement()) {
            PR_Element *const added = addHead(tree, place, node.toElement());
            if (node.hasChildNodes()) {
                place = added;
                node = node.firstChild();
                continue;
            }
        } else {
            addText(tree, place, node);
        }
        while (node.nextSibling().isNull() && node.parentNode() != dom) {
            node = node.parentNode();
            place = place->parent;
        }
        node = node.nextSibling();
    }
    return copy;
}

PR_XmlTree PR_ElementDom::treeOf(QDomElement const &dom)
{
    PR_XmlTree tree;
    add(tree, nullptr, dom);
    return tree;
}
