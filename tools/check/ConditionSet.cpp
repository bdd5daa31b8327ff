#include "ConditionSet.h"

#include "PR_Conditions_p.h"

using namespace Qt::StringLiterals;

namespace {
unsigned int all(QStringList const &words)
{
    return (1U << words.size()) - 1;
}

// The words for which the condition of an element holds.
unsigned int held(QStringList const &words, PR_Element const &element, QStringView attribute)
{
    if (!element.hasAttribute(attribute))
        return all(words);
    PR_Condition const condition(element.attribute(attribute));
    unsigned int bits = 0;
    for (qsizetype i = 0; i < words.size(); ++i)
        bits |= condition.holds(words[i]) ? 1U << i : 0U;
    return bits;
}
} // namespace

QStringList const &ConditionSet::attributes()
{
    static QStringList const names{ u"platform"_s, u"mode"_s, u"feature"_s };
    return names;
}

ConditionSet::ConditionSet(PR_Element const &element)
    : m_platforms(all(PR_Conditions::platforms()))
    , m_modes(all(PR_Conditions::modes()))
{
    if (element.parent && element.parent->name == u"category")
        add(*element.parent);
    add(element);
}

void ConditionSet::add(PR_Element const &element)
{
    m_platforms &= held(PR_Conditions::platforms(), element, u"platform");
    m_modes &= held(PR_Conditions::modes(), element, u"mode");
    if (element.hasAttribute(u"feature")) {
        PR_Condition const feature(element.attribute(u"feature"));
        (feature.isNegated ? m_absentFeatures : m_features).insert(feature.word.toString());
    }
}

bool ConditionSet::canHold() const
{
    return m_platforms != 0 && m_modes != 0 && !m_features.intersects(m_absentFeatures);
}

bool ConditionSet::covers(ConditionSet const &other) const
{
    return (other.m_platforms & ~m_platforms) == 0 && (other.m_modes & ~m_modes) == 0
        && other.m_features.contains(m_features) && other.m_absentFeatures.contains(m_absentFeatures);
}

bool ConditionSet::meets(ConditionSet const &other) const
{
    return (m_platforms & other.m_platforms) != 0 && (m_modes & other.m_modes) != 0
        && !m_features.intersects(other.m_absentFeatures) && !m_absentFeatures.intersects(other.m_features);
}

bool ConditionSet::isEmpty() const
{
    return m_platforms == all(PR_Conditions::platforms()) && m_modes == all(PR_Conditions::modes())
        && m_features.isEmpty() && m_absentFeatures.isEmpty();
}
