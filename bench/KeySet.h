#ifndef KEYSET_H
#define KEYSET_H

#include "PR_Preference.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/*! Upper-case keys with long shared prefixes, and the files of a store that has them: of ten keys four are integers,
   three switches, one a real number and two texts; two in seven have a user's value. */
class KeySet {
public:
    /*! The set of that size, made once. */
    static KeySet const &ofSize(int size);

    /*! A key's text, shared with nothing. */
    static QString ownText(QString const &key) { return QString(key.constData(), key.size()); }

    static void write(QString const &path, QByteArray const &bytes);

    /*! A main store that has loaded the files. */
    std::unique_ptr<PR_Preference> load() const;
    /*! The same as a store beside the main one, whose changes do not refresh the cache. */
    std::unique_ptr<PR_Preference> loadOther() const;
    /*! Texts of the caller's own in random order: all keys, those of the integers, keys that are in no store. */
    std::vector<QString> shuffledKeys() const;
    std::vector<QString> shuffledIntegers() const;
    std::vector<QString> missingKeys() const;

    /*! Where its files lie: "resources/prefs.xml" and "user-pref.xml". */
    QString folder() const { return m_folder.path(); }
    QString const &userName() const { return m_userName; }
    QByteArray const &definitions() const { return m_definitions; }
    QByteArray const &userFile() const { return m_userFile; }
    int size() const { return int(m_keys.size()); }

private:
    explicit KeySet(int size);

    QTemporaryDir m_folder;
    QString m_userName;
    std::vector<QString> m_keys;
    QByteArray m_definitions;
    QByteArray m_userFile;
};

#endif
