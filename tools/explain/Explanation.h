#ifndef EXPLANATION_H
#define EXPLANATION_H

#include "PR_Loader_p.h"

#include <QJsonObject>
#include <QString>

#include <utility>
#include <vector>

class PR_PrefItem;

/*! Where the value of a preference comes from. */
struct Explanation {
    enum Outcome {
        Won,
        Lost, /*!< Something later replaced it. */
        LeftOut, /*!< It is there, but was not used. */
        Absent /*!< The layer says nothing of the key. */
    };

    /*! What one layer says of it. */
    struct Step {
        PR_LoadObserver::Layer layer;
        Outcome outcome = Absent;
        QString file = {};
        int line = 0; /*!< From 1, as the column; 0 where the layer knows no places. */
        int column = 0;
        QString value = {};
        bool isLocked = false;
        QString condition = {};
        QString reason = {}; /*!< Of an outcome other than Won, or what is odd about the value. */

        QString placeText() const { return Explanation::placeText(file, line); }
    };

    /*! A place to show: paths are relative to the installation where they lie in it. */
    static QString placeText(QString const &file, int line);

    Explanation(QString ofKey, PR_PrefItem const *ofStore)
        : key(std::move(ofKey))
        , item(ofStore)
    {
    }

    /*! Adds a step; one that won takes the place of the one that won before. */
    void add(Step const &step);

    bool has(PR_LoadObserver::Layer layer) const;

    QString toText() const;
    QJsonObject toJson() const;

    QString key;
    std::vector<Step> steps;
    QString keptFile = {}; /*!< Beside the user's file; empty when there is none. */
    PR_PrefItem const *item; /*!< The store's; null when it has none. */

private:
    qsizetype m_winner = -1; // the step that won so far
};

#endif
