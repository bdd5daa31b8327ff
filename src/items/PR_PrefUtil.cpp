#include "PR_PrefUtil.h"

#include "PR_ItemElement_p.h"

#include <QDomDocument>

void PR_PrefUtil::addElement(
    QDomDocument *document, QString const &tag, QString const &id, QString const &value, bool cdata)
{
    PR_ItemElement::of(tag, id, value, cdata).appendTo(document);
}

bool PR_PrefUtil::attributes(QDomElement const &element, QString *id, QString *value)
{
    PR_ItemElement const content = PR_ItemElement::of(element);
    *id = content.id;
    *value = content.value();
    return !id->isEmpty();
}
