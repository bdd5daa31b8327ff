#include "PR_PrefUtil.h"

#include "PR_ElementDom_p.h"

void PR_PrefUtil::addElement(
    QDomDocument *document, QString const &tag, QString const &id, QString const &value, bool cdata)
{
    PR_XmlTree tree;
    tree.addItem(nullptr, tag, id, value, cdata);
    PR_ElementDom::append(*document, document->documentElement(), *tree.root());
}

bool PR_PrefUtil::attributes(QDomElement const &element, QString *id, QString *value)
{
    PR_XmlTree const tree = PR_ElementDom::treeOf(element);
    *id = tree.root()->id().toString();
    *value = tree.root()->value().toString();
    return !id->isEmpty();
}
