#include "PR_UserFileMerge_p.h"

#include <algorithm>

bool PR_UserFileMerge::areEqual(PR_Element const &a, PR_Element const &b)
{
    auto const isSame = [](PR_Attribute const &one, PR_Attribute const &other) {
        return one.name == other.name && one.value == other.value;
    };
    if (a.name != b.name
        || !std::equal(
            a.attributes, a.attributes + a.attributeCount, b.attributes, b.attributes + b.attributeCount, isSame))
        return false;
    auto const areNodesEqual = [](PR_Node const &one, PR_Node const &other) {
        if (one.kind != other.kind || one.name != other.name)
            return false;
        return one.kind == PR_Node::Element
            ? areEqual(static_cast<PR_Element const &>(one), static_cast<PR_Element const &>(other))
            : static_cast<PR_TextNode const &>(one).text == static_cast<PR_TextNode const &>(other).text;
    };
    PR_Node const *other = b.firstNode;
    for (PR_Node const *node = a.firstNode; node; node = node->next, other = other->next) {
        if (!other || !areNodesEqual(*node, *other))
            return false;
    }
    return !other;
}

PR_UserFileMerge::PR_UserFileMerge(Sides const &sides)
    : m_isGone(!sides.theirs)
    , m_isBaseBackup(sides.isBaseBackup)
    , m_order(sides.theirs ? sides.theirs : sides.base)
    , m_base(sideOf(sides.base))
    , m_theirs(sideOf(m_order)) // a file that is gone has changed nothing
    , m_ownBase(sideOf(sides.ownBase))
    , m_own(sideOf(sides.own))
{
}

PR_UserFileMerge::Side PR_UserFileMerge::sideOf(PR_Element const *root)
{
    Side side;
    for (PR_Element const &element : PR_Elements(root)) {
        QString const key = element.id().toString();
        Group &group = side.groups[key];
        if (group.empty())
            side.keys.append(key);
        group.push_back(&element);
    }
    return side;
}

PR_UserFileMerge::Group const &PR_UserFileMerge::groupOf(Side const &side, QString const &key)
{
    static Group const none;
    auto const found = side.groups.constFind(key);
    return found == side.groups.constEnd() ? none : *found;
}

bool PR_UserFileMerge::areSame(Group const &a, Group const &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](PR_Element const *one, PR_Element const *other) { return areEqual(*one, *other); });
}

bool PR_UserFileMerge::isOwnChange(QString const &key) const
{
    // Where the file is gone, what it did not have before was never in it: values of the old text file.
    bool const isNew = m_isGone && !m_base.groups.contains(key) && m_own.groups.contains(key);
    return isNew || !areSame(groupOf(m_own, key), groupOf(m_ownBase, key));
}

QStringList PR_UserFileMerge::foreignChanges() const
{
    QStringList changes;
    for (QString const &key : m_theirs.keys) {
        if (!areSame(groupOf(m_theirs, key), groupOf(m_base, key)) && !isOwnChange(key))
            changes.append(key);
    }
    for (QString const &key : m_base.keys) {
        if (!m_theirs.groups.contains(key) && !isOwnChange(key) && !m_isBaseBackup)
            changes.append(key);
    }
    return changes;
}

std::vector<PR_Element const *> PR_UserFileMerge::merged() const
{
    Group merged;
    QStringList added; // keys that the file does not have yet, with their elements
    QHash<QString, Group const *> groups;
    auto const add = [&](QString const &key, Group const &group) {
        added.append(key);
        groups.insert(key, &group);
    };
    for (QString const &key : m_own.keys) {
        if (!m_theirs.groups.contains(key) && isOwnChange(key))
            add(key, groupOf(m_own, key));
    }
    for (QString const &key : m_base.keys) {
        if (m_isBaseBackup && !m_theirs.groups.contains(key) && !isOwnChange(key))
            add(key, groupOf(m_base, key));
    }
    std::sort(added.begin(), added.end());
    auto next = added.cbegin();
    auto const append = [&merged](Group const &group) { merged.insert(merged.end(), group.begin(), group.end()); };
    for (PR_Element const &element : PR_Elements(m_order)) {
        QString const key = element.id().toString();
        for (; next != added.cend() && *next < key; ++next)
            append(*groups.value(*next));
        if (!isOwnChange(key))
            merged.push_back(&element);
        else if (&element == groupOf(m_theirs, key).front())
            append(groupOf(m_own, key));
    }
    for (; next != added.cend(); ++next)
        append(*groups.value(*next));
    return merged;
}
