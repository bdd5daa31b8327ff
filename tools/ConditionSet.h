#ifndef CONDITIONSET_H
#define CONDITIONSET_H

#include "PR_Definition_p.h"

#include <QSet>
#include <QStringList>

/*! Where a definition holds, by the conditions of its category and its own. */
class ConditionSet {
public:
    /*! Those of an element that hold conditions. */
    static QStringList const &attributes();
    static QStringList const &platforms();
    static QStringList const &modes();

    explicit ConditionSet(PR_Definition const &definition);

    /*! Whether there is a platform, a mode and a product in which all conditions hold. */
    bool canHold() const;
    /*! Whether these conditions hold wherever the others do. */
    bool covers(ConditionSet const &other) const;
    bool isEmpty() const;

private:
    QSet<QString> m_platforms;
    QSet<QString> m_modes;
    QSet<QString> m_features; // that must be there
    QSet<QString> m_absentFeatures; // that must not be there
};

#endif
