#ifndef EDITSESSION_P_H
#define EDITSESSION_P_H

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QUndoStack>

#include <functional>

class PR_PrefItem;
class PR_Preference;

/*! The changes that a dialog makes to a store: each can be undone and, where that is wanted, is saved a second after
    the last one. */
class EditSession : public QObject {
    Q_OBJECT

public:
    /*! For \a store, which must outlive the session, and the name of its preference set. */
    EditSession(PR_Preference &store, QString set);

    PR_Preference &store() const { return m_store; }
    QUndoStack &undoStack() { return m_undoStack; }

    /*! Does something to the items of some keys as one step to undo. Whether it changed any of them. */
    bool edit(QStringList const &keys, QString const &name, std::function<void()> const &change);
    void restoreDefaults(QStringList const &keys, QString const &name);
    /*! The keys of the preferences that the user changed and that have a default. */
    QStringList changedKeys() const;
    /*! The label of a preference in the user's language. */
    QString label(QString const &key) const;
    /*! The other preferences that have a shortcut. */
    QStringList othersWith(int code, QString const &key);

    /*! The name of the set that the definitions come from; empty for none. */
    QString const preferenceSet;
    /*! Whether changes are saved. */
    bool isSaving = true;
    /*! Takes over what others saved, where the store is shared. */
    void reload();
    /*! Saves what has changed since the last time. Whether nothing is left to save. */
    bool save();

Q_SIGNALS:
    /*! Values have changed, here or elsewhere; once for all that happened in one go. */
    void changed();
    /*! A step was undone or done again. */
    void stepped(QStringList const &keys);
    void saved(bool isGood, QString const &reason);

private:
    class Step;

    PR_Preference &m_store;
    QUndoStack m_undoStack;
    QTimer m_announcement;
    QTimer m_save;
    bool m_isUnsaved = false;
    QHash<int, QStringList> m_shortcuts; // the keys by shortcut; empty when not known
};

#endif
