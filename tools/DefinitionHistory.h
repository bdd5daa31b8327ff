#ifndef DEFINITIONHISTORY_H
#define DEFINITIONHISTORY_H

#include "PR_DefinitionTree_p.h"

#include <QHash>

#include <memory>
#include <vector>

/*! What becomes of each definition of an installation while a store loads. */
class DefinitionHistory {
public:
    enum Outcome {
        Won, /*!< Gives the default. */
        Replaced, /*!< By a later definition. */
        Locked, /*!< Dropped: an earlier definition locks the key. */
        WrongPlatform,
        WrongMode,
        WrongFeature,
        NoMorphing,
        NoSuchType
    };
    struct Step {
        PR_Definition definition;
        std::shared_ptr<PR_PrefItem> item; /*!< As defined; null when there is no such type. */
        Outcome outcome = Won;
        qsizetype by = -1; /*!< Of the steps of the key, the one that replaced or locks it. */
    };
    using Steps = std::vector<Step>;

    explicit DefinitionHistory(PR_DefinitionTree tree);

    /*! The definitions of a key in the order of the load. */
    Steps const &steps(QString const &key) const;
    /*! The definition that gives the default; null when there is none. */
    Step const *winner(QString const &key) const;
    QStringList keys() const { return m_steps.keys(); }
    std::vector<PR_DefinitionFile> const &files() const { return m_tree.files(); }

private:
    Q_DISABLE_COPY_MOVE(DefinitionHistory)

    static Outcome outcomeOf(Step const &step);
    static void merge(Steps &steps);

    PR_DefinitionTree m_tree;
    QHash<QString, Steps> m_steps;
};

#endif
