#include "DefinitionHistory.h"

#include "PR_PrefConstants.h"
#include "PR_PrefItem.h"
#include "PR_Preference.h"

DefinitionHistory::DefinitionHistory(PR_DefinitionTree tree)
    : m_tree(std::move(tree))
{
    m_tree.visit(PR_DefinitionTree::Everything, [this](PR_Definition const &definition) {
        m_steps[definition.element.attribute(kId)].push_back({ definition, definition.createItem() });
    });
    m_tree.trim();
    for (Steps &steps : m_steps)
        merge(steps);
}

DefinitionHistory::Steps const &DefinitionHistory::steps(QString const &key) const
{
    static Steps const none;
    auto const found = m_steps.constFind(key);
    return found == m_steps.constEnd() ? none : *found;
}

DefinitionHistory::Step const *DefinitionHistory::winner(QString const &key) const
{
    for (Step const &step : steps(key)) {
        if (step.outcome == Won)
            return &step;
    }
    return nullptr;
}

// The outcome by itself, after the tree was trimmed.
DefinitionHistory::Outcome DefinitionHistory::outcomeOf(Step const &step)
{
    auto const &[file, category, element] = step.definition;
    if (category.parentNode().isNull() || element.parentNode().isNull())
        return WrongFeature;
    for (QDomElement const &conditional : { category, element }) {
        if (!PR_Preference::isValidOnThisPlatform(conditional))
            return WrongPlatform;
        if (!PR_Preference::isValidInThisMode(conditional))
            return WrongMode;
    }
    if (!step.item)
        return NoSuchType;
    return PR_Preference::isValidInThisConfig(step.item.get()) ? Won : NoMorphing;
}

void DefinitionHistory::merge(Steps &steps)
{
    qsizetype held = -1;
    for (qsizetype i = 0; i < qsizetype(steps.size()); ++i) {
        Step &step = steps[size_t(i)];
        step.outcome = outcomeOf(step);
        if (step.outcome != Won)
            continue;
        Step *const earlier = held < 0 ? nullptr : &steps[size_t(held)];
        if (!PR_Definition::mayReplace(earlier ? earlier->item.get() : nullptr)) {
            step.outcome = Locked;
            step.by = held;
            continue;
        }
        if (earlier) {
            earlier->outcome = Replaced;
            earlier->by = i;
        }
        held = i;
    }
}
