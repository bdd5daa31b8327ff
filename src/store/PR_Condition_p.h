#ifndef PR_CONDITION_P_H
#define PR_CONDITION_P_H

#include <QStringView>

/*! A condition of a definition file on a word: the word itself, or "not " and the word. */
struct PR_Condition {
    explicit PR_Condition(QStringView text)
        : isNegated(text.startsWith(u"not "))
        , word(isNegated ? text.mid(4) : text)
    {
    }

    /*! Whether the condition holds where only the word \a present is true. */
    bool holds(QStringView present) const { return (word == present) != isNegated; }

    bool isNegated;
    QStringView word; /*!< Of the text, which must live as long. */
};

#endif
