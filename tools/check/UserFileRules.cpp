#include "FileChecks.h"
#include "ValueRules.h"

#include "PR_DefinitionList.h"
#include "PR_PrefConstants.h"

#include "oswRemapPath.h"

using namespace Qt::StringLiterals;

namespace {
// The element that names the set, wherever it stands; the root when none does.
PR_Element const &elementOfSet(PR_Element const &root)
{
    for (PR_Element const &element : PR_Elements(root, u"string")) {
        if (element.id() == u"PREFERENCE_SET")
            return element;
    }
    return root;
}

void reportUnknownKey(Findings &findings, PR_Element const &element, QString const &key, Installation &installation)
{
    if (!installation.find(key).second)
        return findings.add(
            Rule::UnknownKey, element, u"the installation defines no %1"_s.arg(key), kId, installation.nearestTo(key));
    findings.add(Rule::UnknownKey, element,
        (installation.isOfMachine() ? u"%1 is a setting of the application, not of the machine"_s
                                    : u"%1 is a setting of the machine, not of the application"_s)
            .arg(key),
        kId);
}

void checkElement(
    Findings &findings, PR_Element const &element, Definitions const &definitions, Installation &installation)
{
    QString const key = element.id().toString();
    PR_PrefItem *const item = definitions.item(key);
    QString const tag = element.name.toString();
    if (item && item->getTag() != tag)
        return findings.add(
            Rule::ChangedType, element, u"%1, defined as %2"_s.arg(tag, item->getTag()), {}, item->getTag());
    ValueRules::checkAttributes(
        findings, element, ValueRules::valueAttributes(tag) + QStringList{ kValue, kCdata.toString() });
    ValueRules::checkContent(findings, element, true);
    if (key.isEmpty())
        return findings.add(Rule::MissingId, element, u"the element has no id"_s);
    PR_Element const *const definition = definitions.find(key);
    if (!definition)
        return reportUnknownKey(findings, element, key, installation);
    if (!item)
        return;
    if (item->hasFacilityOverride(false))
        findings.add(Rule::DroppedByLock, element, u"%1 locks the key"_s.arg(definitions.placeOf(*definition)), kId);
    ValueRules::checkUserValue(findings, element, *item, definition);
}
} // namespace

void checkSet(Findings &findings, PR_Element const &element, QString const &name)
{
    if (name.isEmpty())
        return;
    QString const path = oswRemapPath::RemapPath2(PR_Loader::setPath(name));
    PR_XmlFile const set = PR_XmlFile::read(path);
    if (set.state == PR_XmlFile::Read)
        return;
    findings.add(Rule::MissingSet, element, u"the preference set %1 cannot be read: %2"_s.arg(path, set.error), kValue,
        NearestWord(PR_DefinitionList::preferenceSets()).to(name));
}

void checkUserFile(Findings &findings, PR_XmlFile const &file, Installation &installation)
{
    PR_Element const &root = *file.tree.root();
    ValueRules::checkRootName(findings, root);
    ValueRules::checkText(findings, root);
    if (QString const kept = PR_Loader::keptFileOf(file.path); !kept.isEmpty())
        findings.add(Rule::KeptFile, root, u"%1 holds values that a run could not read"_s.arg(kept));
    QString const set = PR_Loader::preferenceSetOf(file);
    checkSet(findings, elementOfSet(root), set);
    Definitions const &definitions = installation.ofStore(set);
    QHash<QString, int> lines; // of the last element of each key so far
    for (PR_Element const &element : PR_Elements(root)) {
        QString const key = element.id().toString();
        checkElement(findings, element, definitions, installation);
        if (!key.isEmpty() && lines.contains(key))
            findings.add(Rule::DuplicateKey, element, u"the value of line %1 is not used"_s.arg(lines.value(key)), kId);
        lines.insert(key, element.line);
    }
}
