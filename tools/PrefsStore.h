#ifndef PREFSSTORE_H
#define PREFSSTORE_H

#include "PR_Preference.h"

class QCommandLineParser;
struct Call;

/*! The store that the options of a call name. What goes wrong with it is thrown as a Failure. */
class PrefsStore final : public PR_Preference {
public:
    /*! The name of the store that the options ask for. */
    static QString nameOf(QCommandLineParser const &options);

    /*! Whether the load may mend the user's files. */
    enum Purpose { ToRead, ToWrite };

    /*! Loads the store. Throws if that fails, so that a broken store is never saved. */
    explicit PrefsStore(Call const &call, Purpose purpose = ToRead);
    PrefsStore(QString const &name, bool local, Purpose purpose = ToRead);

    PR_PrefItem &item(QString const &key) const;
    /*! An item that may be changed; a lock is reported. */
    PR_PrefItem &unlockedItem(QString const &key) const;
    /*! Saves, and makes sure of it. */
    void saveNow();

private:
    void keepFontsOfUser();

    bool const m_isLocal;
};

#endif
