#ifndef PR_PREFERENCEDIALOG_H
#define PR_PREFERENCEDIALOG_H

#include "PR_PrefItem.h"
#include "brivantpreferencewidgets_export.h"

#include <QDialog>

#include <memory>

class PR_Preference;
class QUndoStack;

/*! Shows and changes all preferences of a store, from what definitions and store say of them.

    A change takes effect at once, can be undone, and is saved a second after the last one and when the dialog closes:
   so there is no OK and no Apply. When a save fails the dialog says why; it stays open when it was to be closed, and
   the values hold meanwhile. What a PR_ReportCollector has kept is shown as well.

    A host puts it into its menu so, with a store that it keeps as long:

        auto *const dialog = new PR_PreferenceDialog(*tuPref, mainWindow);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->show(); */
class BRIVANT_PREFERENCEWIDGETS_EXPORT PR_PreferenceDialog : public QDialog {
    Q_OBJECT

public:
    /*! For \a store, which must outlive the dialog. Its preferences and the definitions are those of the moment. */
    explicit PR_PreferenceDialog(PR_Preference &store, QWidget *parent = nullptr);
    ~PR_PreferenceDialog() override; /*!< Saves what has changed. */

    /*! Whether the dialog saves what is changed, which it does unless a host does that itself. A store that is shared
        merges with what others saved. */
    void setSaving(bool saving);
    [[nodiscard]] bool isSaving() const; /*!< As setSaving() said. */

    void showCategory(PR_PrefItem::Category category); /*!< Shows a page; nothing happens when there is none. */
    /*! Shows the page with all shortcuts, with a key to press to find its command. */
    void showShortcuts();
    /*! Shows a preference on its page and gives it the focus. False when there is none with that key. */
    bool showPreference(QString const &key);

    /*! The changes made here; belongs to the dialog. */
    [[nodiscard]] QUndoStack *undoStack() const;

    /*! Saves what has changed and closes; stays open when that fails. All ways of closing come here. */
    void done(int result) override;

protected:
    /*! Takes over what other programs saved, when the window becomes active. */
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override; /*!< A narrow window shows the pages as a box above the rows. */

private:
    Q_DISABLE_COPY_MOVE(PR_PreferenceDialog)

    class Private;
    std::unique_ptr<Private> d;
};

#endif
