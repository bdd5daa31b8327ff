#ifndef CONDITIONSET_H
#define CONDITIONSET_H

#include "PR_Element_p.h"

#include <QSet>
#include <QStringList>

/*! Where a definition, or a category, holds, by its conditions and those of its category. */
class ConditionSet {
public:
    /*! Those of an element that hold conditions. */
    static QStringList const &attributes();

    explicit ConditionSet(PR_Element const &element);

    /*! Whether there is a platform, a mode and a product in which all conditions hold. */
    bool canHold() const;
    /*! Whether these conditions hold wherever the others do. */
    bool covers(ConditionSet const &other) const;
    /*! Whether there is a platform, a mode and a product in which both hold. */
    bool meets(ConditionSet const &other) const;
    bool isEmpty() const;

private:
    void add(PR_Element const &element);

    unsigned int m_platforms; // bits of those for which it holds
    unsigned int m_modes;
    QSet<QString> m_features; // that must be there
    QSet<QString> m_absentFeatures; // that must not be there
};

#endif
