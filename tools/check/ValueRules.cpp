#include "ValueRules.h"

#include "Application.h"
#include "NearestWord_p.h"

#include "PR_DefinitionList.h"
#include "PR_ItemSet_p.h"
#include "PR_PrefConstants.h"

#include <QKeySequence>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace {
QString const &rootName = kPref;

QString textOf(PR_Element const &element, QString const &attribute)
{
    return element.attribute(attribute).toString();
}

// A text that no element's value is.
bool isIgnoredText(PR_Node const &node)
{
    bool const isText = node.kind == PR_Node::Text || node.kind == PR_Node::Cdata;
    return isText && !static_cast<PR_TextNode const &>(node).text.trimmed().isEmpty();
}

void checkFlag(Findings &findings, PR_Element const &element, QString const &attribute, Rule rule,
    Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    QStringList const words{ u"true"_s, u"false"_s };
    QString const text = textOf(element, attribute);
    if (element.hasAttribute(attribute) && !words.contains(text, sensitivity)) {
        findings.add(rule, element, u"\"%1\" is neither true nor false and counts as false"_s.arg(text), attribute,
            NearestWord(words).to(text));
    }
}

bool checkNumber(Findings &findings, PR_Element const &element, QString const &attribute)
{
    bool const isWhole = element.name == u"int";
    QString const text = textOf(element, attribute);
    bool isNumber = false;
    if (isWhole)
        (void)text.toInt(&isNumber);
    else
        isNumber = std::isfinite(text.toDouble(&isNumber)) && isNumber;
    bool const isGood = isNumber || !element.hasAttribute(attribute);
    if (!isGood) {
        findings.add(Rule::BadValue, element,
            isWhole ? u"\"%1\" is no whole number of 32 bits and counts as 0"_s.arg(text)
                    : u"\"%1\" is no finite number"_s.arg(text),
            attribute);
    }
    return isGood;
}

void checkRange(Findings &findings, PR_Element const &element, PR_IntItem const &item)
{
    int const value = item.value(), least = item.minValue(), most = item.maxValue();
    if (least <= most && (value < least || value > most))
        findings.add(Rule::OutsideRange, element, u"%1 is outside %2 to %3"_s.arg(value).arg(least).arg(most), kValue);
}

// What lies outside of the limits of a double, which the item does not know.
void checkLimits(Findings &findings, PR_Element const &element, PR_Element const &definition, double value)
{
    auto const check = [&](QString const &attribute, bool isLeast) {
        bool isNumber = false;
        double const limit = textOf(definition, attribute).toDouble(&isNumber);
        if (isNumber && (isLeast ? value < limit : value > limit))
            findings.add(Rule::OutsideRange, element,
                u"%1 is %2 %3"_s.arg(
                    QString::number(value), isLeast ? u"below"_s : u"above"_s, textOf(definition, attribute)),
                kValue);
    };
    check(u"min"_s, true);
    check(u"max"_s, false);
}

void checkChoices(Findings &findings, PR_Element const &element, PR_IntItem const &item)
{
    QString const attribute = u"choices"_s;
    auto const wrong = [&](QString const &text) { findings.add(Rule::BadChoices, element, text, attribute); };
    if (!element.hasAttribute(attribute))
        return;
    QString const text = textOf(element, attribute);
    auto const choices = PR_DefinitionList::choicesOf(text);
    if (!choices)
        return wrong(
            u"\"%1\" is no list of different numbers and their names, as \"0=Never; 1=Always\" is"_s.arg(text));
    bool hasDefault = false;
    for (auto const &choice : *choices) {
        hasDefault = hasDefault || choice.value == item.value();
        if (choice.value < item.minValue() || choice.value > item.maxValue())
            wrong(u"%1 is outside %2 to %3"_s.arg(choice.value).arg(item.minValue()).arg(item.maxValue()));
    }
    if (!hasDefault)
        wrong(u"the default %1 has no name"_s.arg(item.value()));
}

void checkPercentage(Findings &findings, PR_Element const &element, PR_DoubleItem const &item)
{
    if (item.percentage() && (item.value() < 0 || item.value() > 1))
        findings.add(Rule::OutsidePercentage, element,
            u"%1 is outside 0 to 1, as a percentage is"_s.arg(item.valueAsString()), kValue);
}

void checkChannels(Findings &findings, PR_Element const &element)
{
    for (QString const &channel : ValueRules::valueAttributes(u"color")) {
        if (!element.hasAttribute(channel))
            continue;
        QString const text = textOf(element, channel);
        bool isNumber = false;
        int const value = text.toInt(&isNumber);
        if (!isNumber)
            findings.add(Rule::BadValue, element, u"\"%1\" is no whole number and counts as 0"_s.arg(text), channel);
        else if (value < 0 || value > 255)
            findings.add(Rule::OutsideChannel, element, u"%1 is outside 0 to 255"_s.arg(text), channel);
    }
    if (element.hasAttribute(kValue))
        findings.add(Rule::BadValue, element,
            u"\"value\" is not read: a color has red, green, blue and alpha from 0 to 255"_s, kValue);
}

void checkFont(Findings &findings, PR_Element const &element, QString const &name)
{
    if (name.isEmpty())
        return;
    QStringList const fonts = Application::fonts();
    if (!fonts.contains(name, Qt::CaseInsensitive))
        findings.add(
            Rule::MissingFont, element, u"there is no font \"%1\""_s.arg(name), kValue, NearestWord(fonts).to(name));
}

// Whether a text gave a shortcut, by the item that read it.
void checkShortcut(Findings &findings, PR_Element const &element, PR_PrefItem const &item, QString const &text)
{
    bool const isRead = !item.valueAsString().isEmpty();
    if (!text.isEmpty() && (!isRead || QKeySequence(text).count() > 1))
        findings.add(Rule::UnreadableShortcut, element,
            isRead ? u"only the first key of \"%1\" counts"_s.arg(text)
                   : u"\"%1\" is no key, such as F1 or Ctrl+Shift+S"_s.arg(text),
            kValue);
}

template <class Item> Item const *as(PR_PrefItem const &item)
{
    return dynamic_cast<Item const *>(&item);
}
} // namespace

QStringList ValueRules::valueAttributes(QStringView type)
{
    return type == u"color" ? QStringList{ kRed, kGreen, kBlue, kAlpha } : QStringList{ kValue };
}

QString ValueRules::oneOf(QStringList const &words)
{
    return u": %1 or %2"_s.arg(words.mid(0, words.size() - 1).join(", "_L1), words.constLast());
}

void ValueRules::checkRootName(Findings &findings, PR_Element const &root)
{
    QString const tag = root.name.toString();
    if (tag != rootName)
        findings.add(Rule::UnknownRoot, root, u"the root is \"%1\", not \"%2\""_s.arg(tag, rootName), {},
            NearestWord({ rootName }).to(tag));
}

void ValueRules::checkText(Findings &findings, PR_Element const &element)
{
    for (PR_Node const *node = element.firstNode; node; node = node->next) {
        if (isIgnoredText(*node))
            return findings.add(Rule::IgnoredContent, element, u"the text in \"%1\" is not read"_s.arg(element.name));
    }
}

void ValueRules::checkAttributes(Findings &findings, PR_Element const &element, QStringList const &known)
{
    for (int i = 0; i < element.attributeCount; ++i) {
        QString const name = element.attributes[i].name.toString();
        if (name != kId && !known.contains(name))
            findings.add(Rule::UnknownAttribute, element,
                u"\"%1\" has no attribute \"%2\""_s.arg(element.name.toString(), name), name,
                NearestWord(known + QStringList{ kId }).to(name));
    }
}

void ValueRules::checkContent(Findings &findings, PR_Element const &element, bool mayHoldSection)
{
    for (PR_Node const *node = element.firstNode; node; node = node->next) {
        bool const isValue = mayHoldSection && node == element.section();
        if ((node->kind == PR_Node::Element || isIgnoredText(*node)) && !isValue)
            return findings.add(Rule::IgnoredContent, element, u"what stands inside of the element is not read"_s);
    }
}

void ValueRules::checkDefault(Findings &findings, PR_Element const &definition, PR_PrefItem const &item)
{
    QStringList expected;
    if (as<PR_BoolItem>(item)) {
        expected = QStringList{ kValue };
        checkFlag(findings, definition, kValue, Rule::BadValue);
    } else if (auto const *whole = as<PR_IntItem>(item)) {
        expected = QStringList{ kValue };
        bool const hasMinimum = checkNumber(findings, definition, u"min"_s);
        bool const hasMaximum = checkNumber(findings, definition, u"max"_s);
        if (hasMinimum && hasMaximum && whole->minValue() > whole->maxValue())
            findings.add(Rule::ReversedRange, definition,
                u"the minimum %1 is above the maximum %2"_s.arg(whole->minValue()).arg(whole->maxValue()), u"min"_s);
        if (checkNumber(findings, definition, kValue) && hasMinimum && hasMaximum)
            checkRange(findings, definition, *whole);
        checkChoices(findings, definition, *whole);
    } else if (auto const *number = as<PR_DoubleItem>(item)) {
        expected = QStringList{ kValue };
        bool const hasMinimum = checkNumber(findings, definition, u"min"_s) && definition.hasAttribute(u"min");
        bool const hasMaximum = checkNumber(findings, definition, u"max"_s) && definition.hasAttribute(u"max");
        bool const isReversed = hasMinimum && hasMaximum
            && definition.attribute(u"min").toDouble() > definition.attribute(u"max").toDouble();
        if (isReversed)
            findings.add(Rule::ReversedRange, definition,
                u"the minimum %1 is above the maximum %2"_s.arg(
                    textOf(definition, u"min"_s), textOf(definition, u"max"_s)),
                u"min"_s);
        if (checkNumber(findings, definition, kValue)) {
            checkPercentage(findings, definition, *number);
            if (!isReversed)
                checkLimits(findings, definition, definition, number->value());
        }
        checkFlag(findings, definition, u"percentage"_s, Rule::BadFlag);
    } else if (as<PR_RgbaItem>(item)) {
        expected = QStringList{ kRed, kGreen, kBlue };
        checkChannels(findings, definition);
    } else if (as<PR_KeyItem>(item)) {
        checkShortcut(findings, definition, item, textOf(definition, kValue));
    } else if (as<PR_FontItem>(item)) {
        checkFont(findings, definition, textOf(definition, kValue));
    }
    for (QString const &attribute : std::as_const(expected)) {
        if (!definition.hasAttribute(attribute))
            findings.add(Rule::MissingValue, definition, u"\"%1\" is missing"_s.arg(attribute));
    }
    checkFlag(findings, definition, u"facilityOverride"_s, Rule::BadFlag, Qt::CaseInsensitive);
}

void ValueRules::checkUserValue(
    Findings &findings, PR_Element const &element, PR_PrefItem &ofDefinition, PR_Element const *definition)
{
    QString const text = element.value().toString();
    std::unique_ptr<PR_PrefItem> const item(ofDefinition.clone());
    item->removeFacilityOverride();
    PR_ItemTypes::Row const *const row = PR_ItemSet::Entry(item.get()).exactRow();
    if (!row || !row->load(item.get(), element))
        return findings.add(Rule::BadValue, element,
            u"\"%1\" is no %2: %3"_s.arg(
                text, item->getTag(), as<PR_IntItem>(*item) ? "a whole number"_L1 : "a number"_L1),
            kValue);
    if (auto const *whole = as<PR_IntItem>(*item)) {
        checkRange(findings, element, *whole);
    } else if (auto const *number = as<PR_DoubleItem>(*item)) {
        checkPercentage(findings, element, *number);
        if (definition)
            checkLimits(findings, element, *definition, number->value());
    } else if (as<PR_BoolItem>(*item) && text != "Y"_L1 && text != "N"_L1) {
        findings.add(Rule::BadValue, element, u"\"%1\" is no bool: Y or N; it counts as N"_s.arg(text), kValue);
    } else if (as<PR_KeyItem>(*item)) {
        checkShortcut(findings, element, *item, text);
    } else if (as<PR_FontItem>(*item)) {
        checkFont(findings, element, text);
    } else if (as<PR_RgbaItem>(*item)) {
        for (QString const &channel : valueAttributes(u"color")) {
            if (!element.hasAttribute(channel))
                findings.add(Rule::MissingValue, element, u"\"%1\" is missing and counts as 0"_s.arg(channel));
        }
        checkChannels(findings, element);
    }
}
