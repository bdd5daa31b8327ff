#ifndef NEARESTWORD_P_H
#define NEARESTWORD_P_H

#include <QStringList>

/*! Finds the word that somebody may have meant. */
class NearestWord {
public:
    explicit NearestWord(QStringList words);

    /*! The first of the words with the fewest changes to \a word: a letter more or less, another one, two swapped. Case
        does not count. Empty when all need more than a third of its letters or more than three changes, and after a
        thousand searches: a file of nothing but wrong words is not worth the time. */
    QString to(QString const &word) const;

private:
    QStringList m_words;
    mutable int m_searchesLeft = 1000;
};

#endif
