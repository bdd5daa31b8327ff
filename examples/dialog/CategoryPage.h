#ifndef CATEGORYPAGE_H
#define CATEGORYPAGE_H

#include <QScrollArea>
#include <QStringList>

#include <vector>

class ItemEditor;
class PR_Preference;

/*! The preferences of one category, a line each. The lines are made when the page is first shown, so that a dialog with
    many hundred preferences opens at once. */
class CategoryPage : public QScrollArea {
    Q_OBJECT

public:
    /*! For the items of \a store under \a keys. */
    CategoryPage(PR_Preference &store, QStringList const &keys, QWidget *parent = nullptr);

    /*! Shows only the preferences in which each of the words occurs, in key or texts; gives their number. */
    int filter(QStringList const &words);
    /*! Brings the lines that there are up to date. */
    void refresh();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void build();

    PR_Preference &m_store;
    QStringList const m_keys;
    QStringList m_words;
    std::vector<ItemEditor *> m_editors;
};

#endif
