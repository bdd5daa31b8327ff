#include "AC_XML.h"

#include <QDomElement>

namespace {
bool conditionHolds(QDomElement const &element, QStringList const &keywords)
{
    QString const feature = QStringLiteral("feature");
    if (!element.hasAttribute(feature))
        return true;
    QString const condition = element.attribute(feature);
    QLatin1String const negation("not ");
    if (condition.startsWith(negation))
        return !keywords.contains(condition.mid(negation.size()));
    return keywords.contains(condition);
}

// The element after the subtree of an element, in document order and below root.
QDomElement nextBeside(QDomElement element, QDomElement const &root)
{
    while (element != root) {
        QDomElement const sibling = element.nextSiblingElement();
        if (!sibling.isNull())
            return sibling;
        element = element.parentNode().toElement();
    }
    return {};
}
} // namespace

bool AC_XML::trimConditions(QDomElement &root, QStringList const &keywords, bool)
{
    bool removed = false;
    if (!conditionHolds(root, keywords)) {
        while (root.hasChildNodes()) {
            root.removeChild(root.firstChild());
            removed = true;
        }
        return removed;
    }
    // Without recursion: a file decides how deep its elements are nested.
    for (QDomElement element = root.firstChildElement(); !element.isNull();) {
        if (conditionHolds(element, keywords)) {
            QDomElement const child = element.firstChildElement();
            element = child.isNull() ? nextBeside(element, root) : child;
        } else {
            QDomElement const next = nextBeside(element, root);
            element.parentNode().removeChild(element);
            element = next;
            removed = true;
        }
    }
    return removed;
}
