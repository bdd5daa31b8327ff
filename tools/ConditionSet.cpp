#include "ConditionSet.h"

#include "PR_Condition_p.h"

using namespace Qt::StringLiterals;

namespace {
QSet<QString> setOf(QStringList const &words)
{
    return { words.begin(), words.end() };
}

// Leaves the words for which the condition of an element holds.
void keepWhereItHolds(QSet<QString> &words, QDomElement const &element, QString const &attribute)
{
    if (!element.hasAttribute(attribute))
        return;
    QString const text = element.attribute(attribute);
    for (auto word = words.begin(); word != words.end();)
        word = PR_Condition(text).holds(*word) ? std::next(word) : words.erase(word);
}
} // namespace

QStringList const &ConditionSet::attributes()
{
    static QStringList const names{ u"platform"_s, u"mode"_s, u"feature"_s };
    return names;
}

QStringList const &ConditionSet::platforms()
{
    static QStringList const words{ u"windows"_s, u"macosx"_s, u"linux"_s };
    return words;
}

QStringList const &ConditionSet::modes()
{
    static QStringList const words{ u"full"_s, u"paint"_s, u"scan"_s };
    return words;
}

ConditionSet::ConditionSet(PR_Definition const &definition)
    : m_platforms(setOf(platforms()))
    , m_modes(setOf(modes()))
{
    for (QDomElement const &element : { definition.category, definition.element }) {
        keepWhereItHolds(m_platforms, element, u"platform"_s);
        keepWhereItHolds(m_modes, element, u"mode"_s);
        if (element.hasAttribute(u"feature"_s)) {
            QString const text = element.attribute(u"feature"_s);
            PR_Condition const feature(text);
            (feature.isNegated ? m_absentFeatures : m_features).insert(feature.word.toString());
        }
    }
}

bool ConditionSet::canHold() const
{
    return !m_platforms.isEmpty() && !m_modes.isEmpty() && !m_features.intersects(m_absentFeatures);
}

bool ConditionSet::covers(ConditionSet const &other) const
{
    return m_platforms.contains(other.m_platforms) && m_modes.contains(other.m_modes)
        && other.m_features.contains(m_features) && other.m_absentFeatures.contains(m_absentFeatures);
}

bool ConditionSet::isEmpty() const
{
    return m_platforms.size() == platforms().size() && m_modes.size() == modes().size() && m_features.isEmpty()
        && m_absentFeatures.isEmpty();
}
