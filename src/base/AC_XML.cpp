#include "AC_XML.h"

#include "PR_Element_p.h"

#include <QDomElement>

namespace {
// A null condition is that of an element without one.
bool holds(QStringView condition, QStringList const &keywords)
{
    QStringView const negation = u"not ";
    if (condition.startsWith(negation))
        return !keywords.contains(condition.mid(negation.size()));
    return condition.isNull() || keywords.contains(condition);
}

bool conditionHolds(QDomElement const &element, QStringList const &keywords)
{
    QString const feature = QStringLiteral("feature");
    return !element.hasAttribute(feature) || holds(QString(QLatin1String("") + element.attribute(feature)), keywords);
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

// As deep as the reader of the tree lets elements be nested.
bool AC_XML::trimConditions(PR_Element &root, QStringList const &keywords, bool verbose)
{
    bool removed = false;
    bool const keepsRoot = holds(root.attribute(u"feature"), keywords);
    for (PR_Element &child : PR_Elements(root)) {
        child.isExcluded = !keepsRoot || !holds(child.attribute(u"feature"), keywords);
        bool const removedBelow = !child.isExcluded && trimConditions(child, keywords, verbose);
        removed = removed || child.isExcluded || removedBelow;
    }
    return removed;
}
