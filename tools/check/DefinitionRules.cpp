#include "ConditionSet.h"
#include "FileChecks.h"
#include "ItemFilter.h"
#include "ValueRules.h"

#include "PR_Conditions_p.h"
#include "PR_PrefConstants.h"

#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {
QStringList const &types()
{
    static QStringList const names = [] {
        QStringList tags;
        PR_ItemTypes::any([&tags](auto const &row, int) {
            if (row.tag)
                tags.append(QLatin1String(row.tag));
            return false;
        });
        return tags;
    }();
    return names;
}

QStringList attributesOf(QString const &type)
{
    QStringList const names = ConditionSet::attributes() + ValueRules::valueAttributes(type)
        + QStringList{ u"group"_s, u"shortDesc"_s, u"longDesc"_s, u"facilityOverride"_s };
    QStringList const ofNumbers{ u"min"_s, u"max"_s, u"unit"_s };
    if (type == "int"_L1)
        return names + ofNumbers + QStringList{ u"choices"_s };
    return type == "double"_L1 ? names + ofNumbers + QStringList{ u"percentage"_s } : names;
}

bool isCached(QString const &key)
{
    static QSet<QString> const keys{
#define CACHED_REF(Type, Name, KEY, Read) QStringLiteral(KEY),
#include "PR_CachedValues.def"
    };
    return keys.contains(key);
}

// Whether two items of one type differ neither in the default nor in what an editor offers.
bool offerTheSame(PR_PrefItem const &a, PR_PrefItem const &b)
{
    auto const *ints = dynamic_cast<PR_IntItem const *>(&a);
    auto const *otherInts = dynamic_cast<PR_IntItem const *>(&b);
    if (ints && otherInts && (ints->minValue() != otherInts->minValue() || ints->maxValue() != otherInts->maxValue()))
        return false;
    auto const *doubles = dynamic_cast<PR_DoubleItem const *>(&a);
    auto const *otherDoubles = dynamic_cast<PR_DoubleItem const *>(&b);
    if (doubles && otherDoubles && doubles->percentage() != otherDoubles->percentage())
        return false;
    return a.defaultValueAsString() == b.defaultValueAsString();
}

// ---- Conditions

bool checkConditionWord(
    Findings &findings, PR_Element const &element, QString const &attribute, Rule rule, QStringList const &words)
{
    QString const text = element.attribute(attribute).toString();
    QStringList conditions = words;
    for (QString const &word : words)
        conditions.append(u"not "_s + word);
    bool const isGood = !element.hasAttribute(attribute) || conditions.contains(text);
    if (!isGood)
        findings.add(rule, element,
            u"\"%1\" is no condition on the %2"_s.arg(text, attribute)
                + ValueRules::oneOf(words + QStringList{ u"\"not \" and one of them"_s }),
            attribute, NearestWord(conditions).to(text));
    return isGood;
}

bool checkFeature(Findings &findings, PR_Element const &element)
{
    QString const attribute = u"feature"_s;
    static QRegularExpression const form(u"^(not )?(?!not$)\\S+$"_s);
    static QRegularExpression const nearForm(
        u"^\\s*(not\\s+)?(?!not\\s*$)(\\S+)\\s*$"_s, QRegularExpression::CaseInsensitiveOption);
    QString const text = element.attribute(attribute).toString();
    if (!element.hasAttribute(attribute) || form.match(text).hasMatch())
        return true;
    auto const meant = nearForm.match(text);
    QString const suggestion = (meant.captured(1).isEmpty() ? QString() : u"not "_s) + meant.captured(2);
    findings.add(Rule::BadFeature, element, u"\"%1\" is no condition on a feature"_s.arg(text), attribute, suggestion);
    return false;
}

bool checkConditionWords(Findings &findings, PR_Element const &element)
{
    bool const platform =
        checkConditionWord(findings, element, u"platform"_s, Rule::BadPlatform, PR_Conditions::platforms());
    bool const mode = checkConditionWord(findings, element, u"mode"_s, Rule::BadMode, PR_Conditions::modes());
    bool const feature = checkFeature(findings, element);
    return platform && mode && feature;
}

void checkConditions(Findings &findings, PR_Element const &element, bool isOfMainFile)
{
    ConditionSet const all(element);
    bool const readable = checkConditionWords(findings, element);
    if (readable && !all.canHold() && ConditionSet(*element.parent).canHold())
        findings.add(Rule::NeverHolds, element, u"the conditions, with those of the category, contradict each other"_s);
    QString const key = element.id().toString();
    if (isOfMainFile && !all.isEmpty() && isCached(key))
        findings.add(
            Rule::ConditionalCachedKey, element, u"the application caches %1, which must have no condition"_s.arg(key));
}

// ---- The root, categories and locks

void checkRoot(Findings &findings, PR_Element const &root, bool isOfMainFile)
{
    // No other root's condition is looked at.
    ValueRules::checkAttributes(findings, root, isOfMainFile ? QStringList{ u"feature"_s } : QStringList());
    if (isOfMainFile)
        checkFeature(findings, root);
    ValueRules::checkRootName(findings, root);
    ValueRules::checkText(findings, root);
    for (PR_Element const &child : PR_Elements(root)) {
        QString const tag = child.name.toString();
        if (tag != "category"_L1)
            findings.add(Rule::UnknownElement, child, u"\"%1\" stands outside of a category and is not read"_s.arg(tag),
                {}, NearestWord({ u"category"_s }).to(tag));
    }
}

void checkCategory(Findings &findings, PR_Element const &category)
{
    ValueRules::checkText(findings, category);
    ValueRules::checkAttributes(findings, category, ConditionSet::attributes());
    QString const text = category.id().toString();
    if (!CategoryText::categoryOf(text))
        findings.add(Rule::UnknownCategory, category,
            u"there is no category \"%1\""_s.arg(text) + ValueRules::oneOf(CategoryText::all()), kId,
            NearestWord(CategoryText::all()).to(text));
    if (checkConditionWords(findings, category) && !ConditionSet(category).canHold())
        findings.add(Rule::NeverHolds, category, u"the conditions of the category contradict each other"_s);
}

// Finds attributes that were meant to lock, and gives their names.
QStringList checkLock(Findings &findings, PR_Element const &element)
{
    QStringList names;
    for (int i = 0; i < element.attributeCount; ++i) {
        QString const name = element.attributes[i].name.toString();
        bool const isMisspelt = name.compare("facilityoverride"_L1, Qt::CaseInsensitive) == 0;
        bool const isMeant = isMisspelt || name == "locked"_L1 || name == "lock"_L1 || name == "override"_L1;
        if (name == "facilityOverride"_L1 || !isMeant)
            continue;
        findings.add(Rule::BadLock, element, u"\"%1\" does not lock: facilityOverride=\"true\" does"_s.arg(name), name,
            u"facilityOverride"_s);
        names.append(name);
    }
    return names;
}

// ---- Against the definitions of the installation

// What a definition has, and what replaces it leaves off.
void checkLeftOff(Findings &findings, PR_Element const &element, PR_Element const &known, QString const &place)
{
    QStringList gone;
    auto const has = [](PR_Element const &definition, QString const &attribute) {
        bool const isCondition = ConditionSet::attributes().contains(attribute);
        return definition.hasAttribute(attribute) || (isCondition && definition.parent->hasAttribute(attribute));
    };
    QStringList kept = QStringList{ u"percentage"_s, u"shortDesc"_s, u"longDesc"_s } + ConditionSet::attributes();
    if (element.name == u"int") // of a double, an editor keeps them
        kept = QStringList{ u"min"_s, u"max"_s } + kept;
    for (QString const &attribute : std::as_const(kept)) {
        if (has(known, attribute) && !has(element, attribute))
            gone.append(attribute);
    }
    if (!gone.isEmpty())
        findings.add(Rule::LeftOff, element, u"%1 has %2, which this leaves off"_s.arg(place, gone.join(", "_L1)));
}

// Whether the type is that of the installation's definition, if there is one.
bool checkAgainstKnown(
    Findings &findings, PR_Element const &element, PR_PrefItem const &item, Installation &installation)
{
    QString const key = item.getKey();
    auto const [definitions, known] = installation.find(key);
    if (!known) {
        findings.add(
            Rule::UnknownKey, element, u"the installation defines no %1"_s.arg(key), kId, installation.nearestTo(key));
        return true;
    }
    std::unique_ptr<PR_PrefItem> const knownItem = itemOf(*known);
    if (!knownItem)
        return true;
    QString const place = definitions->placeOf(*known);
    if (known->name != element.name) {
        findings.add(Rule::ChangedType, element,
            u"%1, defined as %2 at %3"_s.arg(item.getTag(), knownItem->getTag(), place), {}, knownItem->getTag());
        return false;
    }
    if (!PR_Loader::isLocked(element) && !PR_Loader::isLocked(*known) && offerTheSame(item, *knownItem))
        findings.add(Rule::RepeatedDefault, element, u"the default is that of %1 already"_s.arg(place));
    QString const category = PR_PrefItem::getCategoryString(item.getCategory());
    QString const usual = PR_PrefItem::getCategoryString(knownItem->getCategory());
    if (category != usual && CategoryText::categoryOf(element.parent->id().toString()))
        findings.add(Rule::ChangedCategory, element,
            u"the category is \"%1\", that of %2 is \"%3\""_s.arg(category, place, usual));
    checkLeftOff(findings, element, *known, place);
    return true;
}

// ---- Definitions of the same key

// A definition as one of those of its key, of whatever file.
struct Rival {
    PR_Element const *element;
    Definitions const *others; // null for one of the file that is checked
    ConditionSet conditions;
    bool isLocked;

    bool isOwn() const { return !others; }
    QString place() const { return others ? others->placeOf(*element) : u"line %1"_s.arg(element->line); }
};
using Rivals = std::vector<Rival>;

bool checkPair(Findings &findings, Rival const &earlier, Rival const &later)
{
    if ((!earlier.isOwn() && !later.isOwn()) || !earlier.conditions.canHold() || !later.conditions.canHold())
        return false;
    bool const earlierCovers = earlier.conditions.covers(later.conditions);
    bool const laterCovers = later.conditions.covers(earlier.conditions);
    if (earlier.isLocked && earlierCovers && later.isOwn())
        findings.add(Rule::DroppedByLock, *later.element, u"%1 locks the key"_s.arg(earlier.place()), kId);
    else if (earlier.isLocked || !laterCovers || !earlier.isOwn())
        return false;
    else if (earlierCovers && later.isOwn())
        findings.add(
            Rule::DuplicateKey, *later.element, u"the key is defined before, at %1"_s.arg(earlier.place()), kId);
    else
        findings.add(Rule::ShadowedKey, *earlier.element,
            u"%1 holds wherever this does and replaces it"_s.arg(later.place()), kId);
    return true;
}

// Shows a function each rival with those before it, the nearest first, until it gives true. Nobody has more of them
// than it looks back; a hostile file must not take the square of its size.
template <class Function> void forPairs(Rivals const &rivals, Function const &function)
{
    size_t const farthest = 16;
    for (size_t later = 1; later < rivals.size(); ++later) {
        for (size_t earlier = later; earlier-- > (later > farthest ? later - farthest : 0);) {
            if (function(rivals[earlier], rivals[later]))
                break;
        }
    }
}

// Those of a key in the order of a load.
Rivals rivalsOf(QString const &key, Rivals const &own, PR_LoadObserver::Layer layer, Installation &installation)
{
    Rivals rivals;
    auto const add = [&](Definitions const &definitions) {
        for (PR_Element const *element : definitions.of(key)) {
            if (PR_ItemTypes::find(element->name) != PR_ItemTypes::Count)
                rivals.push_back({ element, &definitions, ConditionSet(*element), PR_Loader::isLocked(*element) });
        }
    };
    for (Definitions const *definitions : installation.mainFiles())
        add(*definitions);
    rivals.insert(rivals.end(), own.begin(), own.end());
    if (layer == PR_LoadObserver::PreferenceSet)
        add(installation.facility());
    return rivals;
}

bool checkShortcut(Findings &findings, QString const &shortcut, Rival const &earlier, Rival const &later)
{
    PR_Element const &first = *earlier.element, &second = *later.element;
    bool const isShared = first.id() != second.id() && earlier.conditions.meets(later.conditions);
    if (isShared)
        findings.add(Rule::SameShortcut, second,
            u"%1 at line %2 has %3 too"_s.arg(first.id().toString()).arg(first.line).arg(shortcut), kValue);
    return isShared;
}

// ---- One definition

void checkKey(Findings &findings, PR_Element const &element, QString const &key)
{
    static QRegularExpression const form(u"^[A-Z0-9][A-Z0-9_]*$"_s);
    if (key.isEmpty())
        findings.add(Rule::MissingId, element, u"the element has no id"_s);
    else if (!form.match(key).hasMatch())
        findings.add(Rule::BadKey, element, u"\"%1\" is no word in upper case"_s.arg(key), kId);
}

void checkType(Findings &findings, PR_Element const &element, QString const &place, CheckedFiles &files)
{
    QString const tag = element.name.toString();
    auto const first = files.types.constFind(element.id().toString());
    if (first == files.types.constEnd())
        files.types.insert(element.id().toString(), { tag, place });
    else if (first->tag != tag)
        findings.add(Rule::TwoTypes, element, u"the type is %1, that of %2 is %3"_s.arg(tag, first->place, first->tag));
}
} // namespace

void checkDefinitions(Findings &findings, PR_XmlFile const &file, PR_LoadObserver::Layer layer, CheckedFiles &files)
{
    bool const isOfMainFile = layer == PR_LoadObserver::MainFile;
    PR_Element const &root = *file.tree.root();
    checkRoot(findings, root, isOfMainFile);
    QHash<QString, Rivals> byKey;
    QHash<QString, Rivals> byShortcut;
    auto const checkDefinition = [&](PR_Element const &element) {
        QString const tag = element.name.toString();
        std::unique_ptr<PR_PrefItem> const item = itemOf(element);
        if (!item)
            return findings.add(Rule::UnknownElement, element,
                u"there is no type \"%1\""_s.arg(tag) + ValueRules::oneOf(types()), {}, NearestWord(types()).to(tag));
        QString const key = item->getKey();
        checkKey(findings, element, key);
        if (!key.isEmpty()) {
            Rival const rival{ &element, nullptr, ConditionSet(element), PR_Loader::isLocked(element) };
            byKey[key].push_back(rival);
            if (dynamic_cast<PR_KeyItem const *>(item.get()) && !item->valueAsString().isEmpty())
                byShortcut[item->valueAsString()].push_back(rival);
        }
        checkConditions(findings, element, isOfMainFile);
        QStringList const reported = checkLock(findings, element) + QStringList{ kValue }; // of a color
        if (isOfMainFile && element.attribute(u"shortDesc").isEmpty() && element.attribute(u"longDesc").isEmpty())
            findings.add(Rule::MissingTexts, element, u"there are no texts: shortDesc and longDesc"_s);
        if (!isOfMainFile && !key.isEmpty() && !checkAgainstKnown(findings, element, *item, files.installation))
            return;
        checkType(findings, element, u"%1:%2"_s.arg(file.path).arg(element.line), files);
        ValueRules::checkAttributes(findings, element, attributesOf(tag) + reported);
        ValueRules::checkContent(findings, element, false);
        ValueRules::checkDefault(findings, element, *item);
        if (layer == PR_LoadObserver::Override && key == "PREFERENCE_SET"_L1) {
            findings.add(Rule::WithoutEffect, element, u"the user's file alone chooses the preference set"_s, kValue);
            checkSet(findings, element, element.attribute(kValue).toString());
        }
    };
    for (PR_Element const &category : PR_Elements(root, u"category")) {
        checkCategory(findings, category);
        for (PR_Element const &element : PR_Elements(category))
            checkDefinition(element);
    }
    for (auto const &[key, own] : std::as_const(byKey).asKeyValueRange())
        forPairs(isOfMainFile ? own : rivalsOf(key, own, layer, files.installation),
            [&](Rival const &earlier, Rival const &later) { return checkPair(findings, earlier, later); });
    for (auto const &[text, rivals] : std::as_const(byShortcut).asKeyValueRange()) {
        QString const &shortcut = text;
        forPairs(rivals, [&](Rival const &earlier, Rival const &later) {
            return checkShortcut(findings, shortcut, earlier, later);
        });
    }
}
