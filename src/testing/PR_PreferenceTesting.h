#ifndef PR_PREFERENCETESTING_H
#define PR_PREFERENCETESTING_H

#include <PR_Preference.h>

#include <QByteArray>
#include <QStringList>

#include <memory>

class PR_PrefItem;

/*! The application's main store for a test of a module: with definitions of its own, without a user's file, fonts or a
    display. One at a time; the host is put back at its end. */
class PR_TestPreferences {
public:
    /*! Definitions as the text of a file, or of the categories of one. */
    explicit PR_TestPreferences(QByteArray const &definitions);
    /*! The definitions of an installation: the folder that holds "resources", by default that of the library. */
    static std::unique_ptr<PR_TestPreferences> fromInstallation(QString const &folder = {});
    ~PR_TestPreferences();

    /*! The store, which is also tuPref; it ends with this object. */
    [[nodiscard]] PR_Preference &store() const;
    PR_Preference *operator->() const { return &store(); } /*!< The same. */
    /*! What was reported to the user since the last call, translated. That a file is missing is no message. */
    QStringList takeMessages();

private:
    Q_DISABLE_COPY_MOVE(PR_TestPreferences)

    class Private;
    explicit PR_TestPreferences(std::unique_ptr<Private> data);

    std::unique_ptr<Private> d;
};

/*! A value that a preference has as long as this object lives; then the value and the origin are what they were. */
class PR_ScopedPreference {
public:
    /*! Sets a key, which has a definition. */
    template <class T>
    PR_ScopedPreference(PR_Preference &store, PR_Key<T> const &key, T const &value)
        : PR_ScopedPreference(store, key.text())
    {
        store.set(key, value);
    }
    /*! Remembers the present value of a text key. */
    PR_ScopedPreference(PR_Preference &store, QString const &key);
    ~PR_ScopedPreference();

private:
    Q_DISABLE_COPY_MOVE(PR_ScopedPreference)

    PR_Preference &m_store;
    QString m_key;
    std::unique_ptr<PR_PrefItem> m_before;
};

#endif
