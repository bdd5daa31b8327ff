#include "DefinitionChecker.h"

#include "CategoryText.h"
#include "KnownDefinitions.h"
#include "NearestWord.h"

#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_FontItem.h"
#include "PR_IntItem.h"
#include "PR_ItemElement_p.h"
#include "PR_KeyItem.h"
#include "PR_PrefConstants.h"
#include "PR_RgbaItem.h"

#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {
QStringList const &types()
{
    static QStringList const names{ u"bool"_s, u"int"_s, u"double"_s, u"color"_s, u"string"_s, u"font"_s,
        u"shortcut"_s };
    return names;
}

QStringList attributesOf(QString const &type)
{
    QStringList const names = ConditionSet::attributes() + valueAttributes(type)
        + QStringList{ u"shortDesc"_s, u"longDesc"_s, u"facilityOverride"_s };
    if (type == "int"_L1)
        return names + QStringList{ u"min"_s, u"max"_s };
    return type == "double"_L1 ? names + QStringList{ u"percentage"_s } : names;
}

bool isCached(QString const &key)
{
    static QSet<QString> const keys{
#define CACHED_REF(Type, Name, KEY, Read) QStringLiteral(KEY),
#include "PR_CachedValues.def"
    };
    return keys.contains(key);
}

// Whether two items are of one type and differ neither in the default nor in what an editor offers.
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
} // namespace

DefinitionChecker::DefinitionChecker(
    PR_XmlFile xml, PR_DefinitionFile::Layer layer, SourceText const &source, KnownDefinitions *known)
    : FileChecker(xml.path, DefinitionFile, source)
    , m_tree(std::move(xml))
    , m_layer(layer)
    , m_known(known)
{
}

void DefinitionChecker::check()
{
    PR_XmlFile const &xml = m_tree.files().front().xml;
    if (xml.state != PR_XmlFile::Read)
        return reportUnreadable(xml);
    checkRoot(xml.document.documentElement());
    m_tree.visit(PR_DefinitionTree::Everything, [this](PR_Definition const &each) { checkDefinition(each); });
    for (auto const &[key, own] : std::as_const(m_rivals).asKeyValueRange())
        checkRivals(m_known ? rivalsOf(key) : own);
}

void DefinitionChecker::checkRoot(QDomElement const &root)
{
    enter(root);
    // No other root's condition is looked at.
    checkAttributes(
        PR_ItemElement::of(root), m_layer == PR_DefinitionFile::Main ? QStringList{ u"feature"_s } : QStringList());
    if (m_layer == PR_DefinitionFile::Main)
        checkFeature(root);
    checkRootName(root.tagName());
    checkText(root);
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.tagName() == "category"_L1) {
            checkCategory(child);
            continue;
        }
        enter(child);
        report(Rule::UnknownElement, u"\"%1\" stands outside of a category and is not read"_s.arg(child.tagName()), {},
            NearestWord({ u"category"_s }).to(child.tagName()));
    }
}

void DefinitionChecker::checkText(QDomElement const &element)
{
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (isIgnoredText(node))
            return reportText(element.tagName());
    }
}

void DefinitionChecker::checkCategory(QDomElement const &category)
{
    enter(category.lineNumber(), category.columnNumber(), {});
    checkText(category);
    checkAttributes(PR_ItemElement::of(category), ConditionSet::attributes());
    QString const text = category.attribute(kId);
    if (!CategoryText::categoryOf(text))
        report(Rule::UnknownCategory, u"there is no category \"%1\""_s.arg(text), kId,
            NearestWord(CategoryText::all()).to(text));
    if (checkConditionWords(category) && !ConditionSet({ nullptr, category, {} }).canHold())
        report(Rule::NeverHolds, u"the conditions of the category contradict each other"_s);
}

void DefinitionChecker::checkDefinition(PR_Definition const &definition)
{
    QDomElement const &element = definition.element;
    enter(element);
    auto const item = definition.createItem();
    if (!item) {
        return report(Rule::UnknownElement, u"there is no type \"%1\""_s.arg(element.tagName()), {},
            NearestWord(types()).to(element.tagName()));
    }
    PR_ItemElement const content = PR_ItemElement::of(element);
    checkAttributes(content, attributesOf(content.tag));
    checkContent(element, false);
    checkConditions(definition);
    checkFlag(content, u"facilityOverride"_s, Rule::BadFlag);
    checkValue(*item, content);
    if (item->getKey().isEmpty())
        return report(Rule::MissingId, u"the element has no id"_s);
    if (m_known)
        checkAgainstKnown(definition, *item);
    m_rivals[item->getKey()].push_back(
        { definition, ConditionSet(definition), item->hasFacilityOverride(false), true });
}

void DefinitionChecker::checkConditions(PR_Definition const &definition)
{
    ConditionSet const all(definition);
    bool const readable = checkConditionWords(definition.element);
    if (readable && !all.canHold() && ConditionSet({ nullptr, definition.category, {} }).canHold())
        report(Rule::NeverHolds, u"the conditions, with those of the category, contradict each other"_s);
    QString const key = definition.element.attribute(kId);
    if (m_layer == PR_DefinitionFile::Main && !all.isEmpty() && isCached(key))
        report(Rule::ConditionalCachedKey, u"the application caches %1, which must have no condition"_s.arg(key));
}

bool DefinitionChecker::checkConditionWords(QDomElement const &element)
{
    bool const platform = checkConditionWord(element, u"platform"_s, Rule::BadPlatform, ConditionSet::platforms());
    bool const mode = checkConditionWord(element, u"mode"_s, Rule::BadMode, ConditionSet::modes());
    bool const feature = checkFeature(element);
    return platform && mode && feature;
}

bool DefinitionChecker::checkConditionWord(
    QDomElement const &element, QString const &attribute, Rule rule, QStringList const &words)
{
    QString const text = element.attribute(attribute);
    QStringList conditions = words;
    for (QString const &word : words)
        conditions.append(u"not "_s + word);
    bool const isGood = !element.hasAttribute(attribute) || conditions.contains(text);
    if (!isGood)
        report(rule, u"\"%1\" is no condition on the %2"_s.arg(text, attribute), attribute,
            NearestWord(conditions).to(text));
    return isGood;
}

bool DefinitionChecker::checkFeature(QDomElement const &element)
{
    QString const attribute = u"feature"_s;
    static QRegularExpression const form(u"^(not )?(?!not$)\\S+$"_s);
    static QRegularExpression const nearForm(
        u"^\\s*(not\\s+)?(?!not\\s*$)(\\S+)\\s*$"_s, QRegularExpression::CaseInsensitiveOption);
    QString const text = element.attribute(attribute);
    if (!element.hasAttribute(attribute) || form.match(text).hasMatch())
        return true;
    auto const meant = nearForm.match(text);
    QString const suggestion = (meant.captured(1).isEmpty() ? QString() : u"not "_s) + meant.captured(2);
    report(Rule::BadFeature, u"\"%1\" is no condition on a feature"_s.arg(text), attribute, suggestion);
    return false;
}

void DefinitionChecker::checkFlag(PR_ItemElement const &element, QString const &attribute, Rule rule)
{
    QStringList const words{ u"true"_s, u"false"_s };
    QString const text = element.attribute(attribute);
    bool const anyCase = rule == Rule::BadFlag && attribute == "facilityOverride"_L1;
    if (element.find(attribute) && !words.contains(text, anyCase ? Qt::CaseInsensitive : Qt::CaseSensitive)) {
        report(rule, u"\"%1\" is neither true nor false and counts as false"_s.arg(text), attribute,
            NearestWord(words).to(text));
    }
}

bool DefinitionChecker::checkNumber(PR_ItemElement const &element, QString const &attribute)
{
    bool const isWhole = element.tag == "int"_L1;
    QString const text = element.attribute(attribute);
    bool isNumber = false;
    if (isWhole)
        (void)text.toInt(&isNumber);
    else
        isNumber = std::isfinite(text.toDouble(&isNumber)) && isNumber;
    bool const isGood = isNumber || !element.find(attribute);
    if (!isGood)
        report(Rule::BadValue,
            isWhole ? u"\"%1\" is no whole number of 32 bits and counts as 0"_s.arg(text)
                    : u"\"%1\" is no finite number"_s.arg(text),
            attribute);
    return isGood;
}

void DefinitionChecker::checkInt(PR_IntItem const &item, PR_ItemElement const &element)
{
    bool const hasMinimum = checkNumber(element, u"min"_s);
    bool const hasMaximum = checkNumber(element, u"max"_s);
    if (hasMinimum && hasMaximum && item.minValue() > item.maxValue())
        report(Rule::ReversedRange,
            u"the minimum %1 is above the maximum %2"_s.arg(item.minValue()).arg(item.maxValue()), u"min"_s);
    if (checkNumber(element, kValue) && hasMinimum && hasMaximum)
        checkRange(item);
}

void DefinitionChecker::checkValue(PR_PrefItem const &item, PR_ItemElement const &element)
{
    auto const expect = [&](QStringList const &attributes) {
        for (QString const &attribute : attributes) {
            if (!element.find(attribute))
                report(Rule::MissingValue, u"\"%1\" is missing"_s.arg(attribute));
        }
    };
    if (dynamic_cast<PR_BoolItem const *>(&item)) {
        expect({ kValue });
        checkFlag(element, kValue, Rule::BadValue);
    } else if (auto const *number = dynamic_cast<PR_IntItem const *>(&item)) {
        expect({ kValue });
        checkInt(*number, element);
    } else if (dynamic_cast<PR_DoubleItem const *>(&item)) {
        expect({ kValue });
        checkNumber(element, kValue);
        checkFlag(element, u"percentage"_s, Rule::BadFlag);
    } else if (dynamic_cast<PR_RgbaItem const *>(&item)) {
        expect({ kRed, kGreen, kBlue });
        checkChannels(element);
    } else if (dynamic_cast<PR_KeyItem const *>(&item)) {
        checkShortcut(item, element.attribute(kValue));
    } else if (auto const *font = dynamic_cast<PR_FontItem const *>(&item)) {
        checkFont(*font, element.attribute(kValue));
    }
}

void DefinitionChecker::checkAgainstKnown(PR_Definition const &definition, PR_PrefItem const &item)
{
    DefinitionHistory::Step const *known = m_known->find(item.getKey());
    if (!known) {
        return report(Rule::UnknownKey, u"the installation defines no %1"_s.arg(item.getKey()), kId,
            m_known->nearestTo(item.getKey()));
    }
    if (!known->item)
        return;
    QString const place = m_known->placeText(known->definition);
    if (known->item->getTag() != item.getTag()) {
        report(Rule::ChangedType,
            u"the type is %1, that of %2 is %3"_s.arg(item.getTag(), place, known->item->getTag()), {},
            known->item->getTag());
    } else if (!item.hasFacilityOverride(false) && !known->item->hasFacilityOverride(false)
        && offerTheSame(item, *known->item)) {
        report(Rule::RepeatedDefault, u"the default is that of %1 already"_s.arg(place));
    }
    QString const category = PR_PrefItem::getCategoryString(item.getCategory());
    QString const usual = PR_PrefItem::getCategoryString(known->item->getCategory());
    if (category != usual && CategoryText::categoryOf(definition.category.attribute(kId)))
        report(Rule::ChangedCategory, u"the category is \"%1\", that of %2 is \"%3\""_s.arg(category, place, usual));
}

// With those of the other files, in the order of a load.
DefinitionChecker::Rivals DefinitionChecker::rivalsOf(QString const &key) const
{
    Rivals rivals;
    auto const add = [&](DefinitionHistory const &history) {
        for (DefinitionHistory::Step const &step : history.steps(key)) {
            if (step.item)
                rivals.push_back(
                    { step.definition, ConditionSet(step.definition), step.item->hasFacilityOverride(false), false });
        }
    };
    for (DefinitionHistory const *history : m_known->mainFiles())
        add(*history);
    Rivals const own = m_rivals.value(key);
    rivals.insert(rivals.end(), own.begin(), own.end());
    if (m_layer == PR_DefinitionFile::Set)
        add(m_known->facility());
    return rivals;
}

void DefinitionChecker::checkRivals(Rivals const &rivals)
{
    qsizetype const farthest =
        16; // nobody defines a key more often; a hostile file must not take the square of its size
    for (qsizetype later = 1; later < qsizetype(rivals.size()); ++later) {
        for (qsizetype earlier = later - 1; earlier >= qMax(qsizetype(0), later - farthest); --earlier) {
            if (checkPair(rivals[size_t(earlier)], rivals[size_t(later)]))
                break;
        }
    }
}

bool DefinitionChecker::checkPair(Rival const &earlier, Rival const &later)
{
    if ((!earlier.isOwn && !later.isOwn) || !earlier.conditions.canHold() || !later.conditions.canHold())
        return false;
    bool const earlierCovers = earlier.conditions.covers(later.conditions);
    bool const laterCovers = later.conditions.covers(earlier.conditions);
    if (earlier.isLocked && earlierCovers && later.isOwn)
        reportRival(later, Rule::DroppedByLock, u"%1 locks the key"_s, earlier);
    else if (earlier.isLocked || !laterCovers || !earlier.isOwn)
        return false;
    else if (earlierCovers && later.isOwn)
        reportRival(later, Rule::DuplicateKey, u"the key is defined before, at %1"_s, earlier);
    else
        reportRival(earlier, Rule::ShadowedKey, u"%1 holds wherever this does and replaces it"_s, later);
    return true;
}

void DefinitionChecker::reportRival(Rival const &own, Rule rule, QString const &text, Rival const &other)
{
    QString const place = placeText(other);
    enter(own.definition.element);
    report(rule, text.arg(place), kId);
}

QString DefinitionChecker::placeText(Rival const &rival)
{
    if (!rival.isOwn)
        return m_known->placeText(rival.definition);
    enter(rival.definition.element);
    return u"line %1"_s.arg(place().line);
}
