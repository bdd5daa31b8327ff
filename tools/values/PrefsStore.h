#ifndef PREFSSTORE_H
#define PREFSSTORE_H

#include "PR_FontItem.h"
#include "PR_Preference.h"
#include "PR_XmlReader_p.h"

#include "HostPlatform.h"
#include "PL_FileSlot_p.h"

#include <memory>
#include <utility>

class QCommandLineParser;
struct Call;

/*! As long as it lives, what the library reports goes elsewhere: nowhere, unless a receiver is given. */
class ReportScope {
public:
    using Receiver = std::function<void(HostReport const &)>;

    explicit ReportScope(Receiver receiver = [](HostReport const &) {})
        : m_usual(std::exchange(HostPlatform::current().report, std::move(receiver)))
    {
    }
    ~ReportScope() { HostPlatform::current().report.swap(m_usual); }

private:
    Q_DISABLE_COPY_MOVE(ReportScope)

    Receiver m_usual;
};

/*! Whether a root holds categories, or elements within elements: a user's values stand in the root itself. */
bool holdsDefinitions(PR_Element const &root);

/*! A user's file or, where it is damaged, its backup. */
PR_XmlFile readUserFile(QString const &path);

/*! The store that the options of a call name. What goes wrong with it is thrown as a Failure. */
class PrefsStore final : public PR_Preference {
public:
    /*! The name of the store that the options ask for. */
    static QString nameOf(QCommandLineParser const &options);

    /*! Whether the load may mend the user's files. */
    enum Purpose { ToRead, ToWrite };

    /*! Loads the store. Throws if that fails, so that a broken store is never saved. Fonts are not looked up: their
       items have no list of names until useFonts() was called. */
    explicit PrefsStore(Call const &call, Purpose purpose = ToRead);
    PrefsStore(QString const &name, bool local, Purpose purpose = ToRead);

    /*! The item of a key; a font's has its list of names. */
    PR_PrefItem &item(QString const &key);
    /*! An item that may be changed; a lock is reported. */
    PR_PrefItem &unlockedItem(QString const &key);
    /*! Saves, and makes sure of it. */
    void saveNow();

    /*! Looks the fonts up when a font's item fulfils a condition; all items are made anew then. */
    template <class Condition> void useFontsWhere(Condition const &holds)
    {
        for (PR_PrefItem const *item : *this) {
            if (dynamic_cast<PR_FontItem const *>(item) && holds(*item))
                return useFonts();
        }
    }

private:
    void waitForTurn();
    void useFonts();

    bool m_hasFonts = false;
    std::unique_ptr<PL_FileLock> m_turn;
};

#endif
