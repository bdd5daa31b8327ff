#ifndef PR_PREFERENCE_H
#define PR_PREFERENCE_H

#include "MSG_Text.h"
#include "PR_Key.h"
#include "PR_PrefCmp.h"
#include "brivantpreference_export.h"

#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <set>
#include <type_traits>
#include <utility>

class PR_PrefItem;
class QDomElement;

/*! The handle of a subscription. It may be copied, and may go: the subscription stays until end(). */
class BRIVANT_PREFERENCE_EXPORT PR_Subscription {
public:
    PR_Subscription() = default;
    void end(); /*!< Ends the subscription. */

private:
    friend class PR_Preference;

    std::weak_ptr<bool> m_isActive; // owned by the store's side
};

/*! A store of preference items by key.

    Filled from the definition files of the installation and, on top of them, from the user's file. Reads never fail: a
    key that is missing or of another type gives a fallback. A write that changes a value emits preferenceChanged()
    before it returns. Used from the thread that owns the object; nothing is synchronised. */
class BRIVANT_PREFERENCE_EXPORT PR_Preference : public QObject {
    Q_OBJECT

public:
    /*! How the load of a store ended. */
    enum Error : int {
        NoError = 0, /*!< Also when there is no user file. */
        DefaultFileNotFound = 1, /*!< The definitions are missing or cannot be read. The store is empty. */
        FileNotFound = 2, /*!< The user's file exists but cannot be opened. */
        FileCorrupted = 3 /*!< The user's file is no XML and has no good backup; load() never gives it. */
    };

    /*! How the last save() of a store ended. */
    struct SaveStatus {
        /*! Whether the values reached the disk. */
        enum State {
            NotTried, /*!< Nothing has been saved yet. */
            Saved, /*!< The values are on the disk; the reason tells of values that no XML file can hold. */
            Failed /*!< The new values may not be on the disk; the file, or its backup, is good. */
        };
        State state = NotTried; /*!< The outcome of the last save. */
        QString reason; /*!< A text to show; empty when there is nothing to say. */
    };

    /*! Visits the items in ascending order of their keys. An iterator stays valid until its item is deleted. */
    using const_iterator = std::set<PR_PrefItem *, PR_PrefCmp>::const_iterator;

    /*! \name Creation */
    /*!\{*/
    /*! Creates the application's main store, a PR_CachedPreferences, loaded and with the cache filled; the caller owns
        it. */
    [[nodiscard]] static PR_Preference *createPreference(QString name);
    /*! Creates a store of machine-local settings, loaded, which the caller owns. Gives null when there is no folder for
        its file. */
    [[nodiscard]] static PR_Preference *createLocalPreferences();
    /*! Deletes the items. */
    ~PR_Preference() override;

    /*! Reads the definitions and then the user's values, from the XML file or else from the legacy text file. Failures
        are reported; the result does not change getErrorCode(). A call from inside of a load of the same store changes
        nothing and gives getErrorCode(). */
    Error load();
    /*! Tells how the load at construction ended. */
    [[nodiscard]] Error getErrorCode() const;
    /*! The text for getErrorCode(); empty when there is nothing to say. */
    [[nodiscard]] MSG_Text getErrorMessage() const;
    /*! The text for the application's main store, tuPref. */
    [[nodiscard]] static MSG_Text getPrefErrorMessage();
    /*! The path of the legacy text file. */
    [[nodiscard]] QString getPath() const;
    /*! The path of the user's XML file; empty when the store has none. */
    [[nodiscard]] QString getPathXml() const;
    /*!\}*/

    /*! \name Several stores of one file
        A shared store writes what it changed over what the file holds by then, instead of replacing the file with its
        values: what other stores and programs saved meanwhile stays, and is taken over. */
    /*!\{*/
    /*! Shares the file from now on, or no longer. To be called between a load and the first write. */
    void setShared(bool shared);
    [[nodiscard]] bool isShared() const; /*!< Whether setShared() said so; never so for a copied store. */
    /*! Takes over what others saved since the last load, save or call; what this store changed and has not saved stays.
        One look at the file when nothing did, so that a host calls it whenever its window becomes active. True when a
        value changed, which is then announced once. Items stay as they are: definitions, locks and the preference set
        change with load() alone. */
    bool reloadShared();
    /*!\}*/

    /*! \name Lookup
        The items belong to the store; pointers and references stay valid until the item is deleted or replaced: by a
        removal, a write of another type, or a load. */
    /*!\{*/
    /*! The item of exactly that key; null when there is none. */
    [[nodiscard]] PR_PrefItem *find(QString key) const;
    /*! The first of all items. After a removal of all, a copy and a load the range begins anew. */
    [[nodiscard]] const_iterator begin() const;
    [[nodiscard]] const_iterator end() const; /*!< The place behind the last item. */
    [[nodiscard]] const_iterator constBegin() const { return begin(); } /*!< The same as begin(). */
    [[nodiscard]] const_iterator constEnd() const { return end(); } /*!< The same as end(). */
    /*!\}*/

    /*! \name Reads of a current value by reference
        A key without an item of the type gives the store's false, 0 or empty value, valid as long as the store. */
    /*!\{*/
    [[nodiscard]] bool const &getBool(QString const &key) const; /*!< The value of a bool item. */
    [[nodiscard]] int const &getInt(
        QString const &key) const; /*!< The value of an integer, or the index of a choice. */
    [[nodiscard]] int const &getEnum(
        QString const &key) const; /*!< The index of a choice, or the value of an integer. */
    [[nodiscard]] double const &getDouble(QString const &key) const; /*!< The value of a double item. */
    [[nodiscard]] unsigned int const &getRgba(QString const &key) const; /*!< The colour of an item, as 0xAARRGGBB. */
    [[nodiscard]] QString const &getString(QString const &key) const; /*!< The text of a string item. */
    [[nodiscard]] QKeySequence const &getKey(QString const &key) const; /*!< A shortcut; the empty sequence for none. */
    /*!\}*/

    /*! \name Reads with a default
        A string item gives what its text converts to; a key without a fitting item gives \a value. */
    /*!\{*/
    [[nodiscard]] bool getBoolValue(QString const &key, bool value) const; /*!< The value of a bool item. */
    /*! The value of an integer, or of a double, truncated; \a value for a double that is too large. */
    [[nodiscard]] int getIntValue(QString const &key, int value) const;
    [[nodiscard]] double getDoubleValue(QString const &key, double value) const; /*!< A double, or an integer. */
    [[nodiscard]] int getEnumValue(QString const &key, int value) const; /*!< The index of an enumeration or a font. */
    /*! The colour of an item, as 0xAARRGGBB. */
    [[nodiscard]] unsigned int getRgbaValue(QString const &key, unsigned int const &value) const;
    /*! The text form of any item. */
    [[nodiscard]] QString getStringValue(QString const &key, QString const &value) const;
    /*! The name of the chosen font of a font item. */
    [[nodiscard]] QString getFontValue(QString const &key, QString const &value) const;
    /*!\}*/

    /*! \name Writes
        Each makes \a value the user's value. A change refreshes the cache and is then announced by preferenceChanged();
        nothing is saved. A missing key is created in the category Internal, without refresh or notice, save that
        setEnumValue() announces an index other than 0. An item of another class is replaced by such a one, but never a
        locked item: it reports and stays. Only setStringValue() leaves items of other classes as they are. */
    /*!\{*/
    void setBoolValue(QString const &key, bool value); /*!< Sets a bool. */
    void setIntValue(QString const &key, int value); /*!< Sets an integer; the range of the item is not tested. */
    void setDoubleValue(QString const &key, double value); /*!< Sets a double. */
    void setEnumValue(QString const &key, int value); /*!< Sets the index of a choice or a font, which is not tested. */
    void setRgbaValue(QString const &key, unsigned int const &value); /*!< Sets a colour, as 0xAARRGGBB. */
    void setStringValue(QString const &key, QString const &value); /*!< Sets a string. */
    /*! Sets the three preferences that differ by flavour: false for the main product's habits. */
    void setPrefsFlavour(bool flavour);
    /*!\}*/

    /*! \name Defaults and removal
        Nothing is announced and the cached values stay as they are: emitPreferenceChanged() does both. */
    /*!\{*/
    /*! Brings the default back, unless the item is locked or of the category Internal. */
    void restoreDefault(QString const &key);
    void restoreDefaults(); /*!< Brings all defaults back. */
    /*! Deletes every item whose key begins with \a prefix, case-sensitively. */
    void deleteAllKeyBeginingWith(QString const &prefix);
    /*!\}*/

    /*! \name Observation */
    /*!\{*/
    /*! Refreshes the cache and announces a change, as a write does. */
    void emitPreferenceChanged();
    /*! Stops preferenceChanged() for the rest of the store's life. */
    void disableEvents();
    /*! Is called before each announcement once a main store is created; does nothing here. */
    virtual void updateCache();

Q_SIGNALS:
    /*! Some value has changed. Emitted inside the write, the cache already refreshed. A receiver may delete the store,
        though not while it loads. */
    void preferenceChanged();
    /*!\}*/

public:
    /*! Calls a function with the old and the new value of a key, both of its type, after each operation of the store
       that left it with another one: a write, once the cache is refreshed, a reset, load(), copy(), reloadShared() and
        emitPreferenceChanged(). It ends with its receiver, its handle or the store. */
    template <class T, class Function>
    PR_Subscription subscribe(PR_Key<T> const &key, QObject *receiver, Function function)
    {
        auto const known = std::make_shared<T>(value(key));
        return addSubscriber(key, receiver, [this, key, known, function] {
            T const now = value(key);
            if (now == *known)
                return;
            T const old = std::exchange(*known, now);
            function(old, now);
        });
    }

    /*! \name Typed keys
        What a misspelt key, or a value of another type, does not get past the compiler. */
    /*!\{*/
    /*! The value of the key's item; the default of its definition when there is no item of the type. */
    template <class T> [[nodiscard]] T value(PR_Key<T> const &key) const;
    /*! Makes \a value the user's value, as the writes above. Whether the store holds it now: not when the key is locked
       or the value is outside of the declared range, no font of the list, a shortcut of several keys or a text for an
       item of another type; nothing changes then. */
    template <class T, class Value> bool set(PR_Key<T> const &key, Value const &value)
    {
        static_assert(std::is_same_v<T, Value>, "the value has another type than the key");
        return setTyped(key, value);
    }
    [[nodiscard]] bool isLocked(PR_KeyName const &key) const; /*!< Whether the facility locked the key. */
    void reset(PR_KeyName const &key); /*!< As restoreDefault(). */
    /*!\}*/

    /*! \name Saving */
    /*!\{*/
    /*! Writes the user's values. A failure is reported and leaves a good file. Nothing is saved while the store
        loads. */
    void save();
    /*! Tells whether the last save() reached the disk, and if not, why. */
    [[nodiscard]] SaveStatus saveStatus() const;
    /*!\}*/

    /*! \name Conditions of definitions */
    /*!\{*/
    /*! Whether the attribute "platform" of a definition admits it on this platform. */
    [[nodiscard]] static bool isValidOnThisPlatform(QDomElement const &element);
    /*! Whether the attribute "mode" of a definition admits it in the host's mode. */
    [[nodiscard]] static bool isValidInThisMode(QDomElement const &element);
    /*! Whether the host has the feature that an item serves. */
    [[nodiscard]] static bool isValidInThisConfig(PR_PrefItem const *item);
    /*!\}*/

    /*! \name Copies and translation */
    /*!\{*/
    /*! Creates a store with clones of the items of \a other and with its paths; nothing is loaded or announced. */
    PR_Preference(PR_Preference &other);
    /*! Deletes the items and takes over clones of those of \a other; a copy to itself changes nothing. Announces
        nothing. */
    void copy(PR_Preference &other);
    /*! Translates a source text as tr() does, which reads UTF-8 itself. */
    static QString trUtf8(char const *source, char const *disambiguation = nullptr);
    static QString trUtf8(char const *source, char const *disambiguation, int n); /*!< The same for \a n things. */
    /*!\}*/

protected:
    /*! \a name is the path of the legacy text file, from which that of the XML file follows. A \a local store has
        the machine-local definitions. With \a loadNow the constructor loads, by this class's own initPreferences(). */
    PR_Preference(QString name, bool local, bool loadNow);

    /*! Loads and keeps the result as the error code; for classes that override initPreferences(). */
    void init();
    /*! Deletes the item of a key, if there is one. Announces nothing. */
    void deleteKey(QString const &key);
    /*! Deletes all items. Announces nothing. */
    void clear();

    /*! Empties the store and fills it from the definition files: NoError or DefaultFileNotFound. */
    virtual Error initPreferences();

    class Private;

private:
    friend class PR_DefinitionList;
    friend class PR_PreferenceBatch;

    template <class T> bool setTyped(PR_Key<T> const &key, T const &value);
    PR_Subscription addSubscriber(PR_KeyName const &key, QObject *receiver, std::function<void()> check);

    static QString getPrefsXMLPath();
    static QString getLocalPrefsXMLPath();
    static QString getPrefsOverrideXMLPath();
    QString getPrefsSetXMLPath();
    Error loadXml();

    std::unique_ptr<Private> d;
};

/*! As long as it lives, the writes of a store refresh and announce nothing; once, at its end, when one did change
    something. Batches of one store may be nested. */
class BRIVANT_PREFERENCE_EXPORT PR_PreferenceBatch {
public:
    /*! For a store, which may end before. */
    explicit PR_PreferenceBatch(PR_Preference &store);
    ~PR_PreferenceBatch();

private:
    Q_DISABLE_COPY_MOVE(PR_PreferenceBatch)

    QPointer<PR_Preference> m_store;
};

/*! The application's main store; set by the host, null until then. */
extern BRIVANT_PREFERENCE_EXPORT PR_Preference *tuPref;

/*! The process's store of machine-local settings, created by the first call and kept; null when it could not be created
    then, and for a call from inside of that first one. */
[[nodiscard]] BRIVANT_PREFERENCE_EXPORT PR_Preference *localPrefs();

#endif
