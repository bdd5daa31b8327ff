#ifndef EXPLANATION_H
#define EXPLANATION_H

#include "SourceText.h"

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
        QString layer;
        Outcome outcome = Absent;
        QString file = {};
        Place place = {};
        QString value = {};
        bool isLocked = false;
        QString condition = {};
        QString reason = {}; /*!< Of an outcome other than Won. */

        QString placeText() const;
    };

    Explanation(QString ofKey, PR_PrefItem const *ofStore)
        : key(std::move(ofKey))
        , item(ofStore)
    {
    }

    /*! Adds a step; one that won takes the place of the one that won before. */
    void add(Step const &step);

    QString toText() const;
    QJsonObject toJson() const;

    QString key;
    std::vector<Step> steps; /*!< In the order of the load. */
    PR_PrefItem const *item; /*!< The store's; null when it has none. */

private:
    qsizetype m_winner = -1; // the step that won so far
};

#endif
