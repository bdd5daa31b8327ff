#ifndef PREFERENCEDIALOG_H
#define PREFERENCEDIALOG_H

#include <PR_PrefItem.h>

#include <QDialog>
#include <QTimer>

#include <vector>

class CategoryPage;
class PR_Preference;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;

/*! Shows and changes all preferences of a store, from what the store alone says of them.

    A change takes effect at once, as it does when another part of the program makes it, and each preference has its own
    way back: so there is no OK, no Apply and no Cancel, whose meanings an artist would have to remember while trying
    out colours in a view beside the dialog. Closing saves. When that fails, the dialog says why and stays; the values
    hold meanwhile, and the next close tries again. */
class PreferenceDialog : public QDialog {
    Q_OBJECT

public:
    /*! For \a store, which must outlive the dialog. Its categories and keys are those of the moment. */
    explicit PreferenceDialog(PR_Preference &store, QWidget *parent = nullptr);

    void showCategory(PR_PrefItem::Category category);

    /*! Saves what has changed and closes; stays open when that fails. All ways of closing come here. */
    void done(int result) override;

protected:
    /*! Takes over what other programs saved, when the window becomes active. */
    bool event(QEvent *event) override;

private:
    QWidget *createCategories();
    QWidget *createError();
    QWidget *createButtons();
    void addCategory(PR_PrefItem::Category category, QStringList const &keys);
    void search();
    void refresh();
    void confirmRestoreAll();
    bool save();

    PR_Preference &m_store;
    std::vector<CategoryPage *> m_pages; // in the order of the list
    bool m_unsaved = false;
    QTimer m_refresh;

    QLineEdit *m_search;
    QListWidget *m_categories;
    QStackedWidget *m_stack;
    QLabel *m_noMatch;
    QFrame *m_error;
    QLabel *m_errorText;
    QPushButton *m_restoreAll;
};

#endif
