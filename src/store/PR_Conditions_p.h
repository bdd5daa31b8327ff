#ifndef PR_CONDITIONS_P_H
#define PR_CONDITIONS_P_H

#include <QStringList>
#include <QStringView>

class QString;

/*! A condition of a definition on a word: the word itself, or "not " and the word. */
struct PR_Condition {
    explicit PR_Condition(QStringView text)
        : isNegated(text.startsWith(u"not "))
        , word(isNegated ? text.mid(4) : text)
    {
    }

    /*! Whether the condition holds where only the word \a present is true. */
    bool holds(QStringView present) const { return (word == present) != isNegated; }

    bool isNegated;
    QStringView word; /*!< Part of the text, which must live as long. */
};

/*! Which definitions count in this host. A null text stands for an element without the attribute. */
namespace PR_Conditions {
bool admitsPlatform(QStringView condition);
bool admitsMode(QStringView condition);
/*! Whether the host has the feature that a preference serves. */
bool admitsKey(QString const &key);

/*! The words that conditions name. */
QStringList const &platforms();
QStringList const &modes();
} // namespace PR_Conditions

#endif
