#ifndef FUZZSTORE_H
#define FUZZSTORE_H

#include "PR_PrefItem.h"
#include "PR_Preference.h"

#include <map>
#include <optional>

/*! Stops the process, which makes the input a finding, unless \a holds. */
void require(bool holds, char const *what, QString const &detail = {});

/*! The text that an item has to have after a save and a load; none when the file cannot hold its value. */
std::optional<QString> textFromFile(PR_PrefItem const *item);

/*! A store over files that a fuzz target writes anew for each input. All inputs of a process share one temporary folder
    and a host with three fonts that swallows the reports. */
class FuzzStore : public PR_Preference {
public:
    enum File { Definitions, Override, UserXml, UserBackup, UserDamaged, UserText };
    static QString path(File file);
    static void write(File file, QByteArray const &bytes);
    static QByteArray read(File file);
    static void removeUserFiles();
    /*! Definitions with each type, locked, internal and plain, for the targets that read a user's file. */
    static void writeDefinitions();

    /*! Loads the files that are there. */
    FuzzStore();
    using PR_Preference::PR_Preference;

    /*! What has to come back, by key. */
    struct State {
        QString tag, text;
        PR_PrefItem::Origin origin;
        bool operator==(State const &other) const;
    };
    std::map<QString, State> states() const;

    /*! Reads each item in every way, and tests the order of the keys. */
    void checkReads() const;
    /*! Saves and loads twice: nothing changes but what a file cannot hold, and that only the first time. */
    void checkRoundTrip();

private:
    QByteArray savedBytes();
};

#endif
