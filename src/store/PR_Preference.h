#ifndef PR_PREFERENCE_H
#define PR_PREFERENCE_H

#include "MSG_Text.h"
#include "PR_PrefCmp.h"
#include "brivantpreference_export.h"

#include <QKeySequence>
#include <QObject>
#include <QString>

#include <memory>
#include <set>

class PR_PrefItem;
class QDomElement;

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
            Saved, /*!< The values are on the disk. */
            Failed /*!< The file is as it was. */
        };
        State state = NotTried; /*!< Of the last save. */
        QString reason; /*!< Of a failure, to show. */
    };

    /*! Visits the items in ascending order of their keys. Stays valid until its item is deleted. */
    using const_iterator = std::set<PR_PrefItem *, PR_PrefCmp>::const_iterator;

    /*! A store with clones of the items of \a other and with its paths; nothing is loaded or emitted. */
    PR_Preference(PR_Preference &other);
    /*! Deletes the items. */
    ~PR_Preference() override;

    /*! \name Translation */
    /*!\{*/
    /*! As tr(), which reads UTF-8 itself. */
    static QString trUtf8(char const *source, char const *disambiguation = nullptr);
    static QString trUtf8(char const *source, char const *disambiguation, int n); /*!< The same for \a n things. */
    /*!\}*/

    /*! \name Lookup
        The items belong to the store; pointers and references stay valid until the item is deleted or replaced: by a
        removal, a write of another type, or a load. */
    /*!\{*/
    /*! The item of exactly that key; null when there is none. */
    PR_PrefItem *find(QString key) const;
    /*! The range of all items. After clear(), copy() and load() begin anew. */
    const_iterator begin() const;
    const_iterator end() const; /*!< Behind the last item. */
    const_iterator constBegin() const { return begin(); } /*!< begin() */
    const_iterator constEnd() const { return end(); } /*!< end() */
    /*!\}*/

    /*! \name Reads of a current value by reference
        A key without an item of the type gives the store's false, 0 or empty value, valid as long as the store. */
    /*!\{*/
    bool const &getBool(QString const &key) const; /*!< Of a bool. */
    int const &getInt(QString const &key) const; /*!< Also the index of an enumeration or a font. */
    int const &getEnum(QString const &key) const; /*!< Also an integer. */
    double const &getDouble(QString const &key) const; /*!< Of a double alone. */
    unsigned int const &getRgba(QString const &key) const; /*!< Of a color, as 0xAARRGGBB. */
    QString const &getString(QString const &key) const; /*!< Of a string alone. */
    QKeySequence const &getKey(QString const &key) const; /*!< Of a shortcut; empty for none. */
    /*!\}*/

    /*! \name Reads with a default
        A string item gives what its text converts to; a key without a fitting item gives \a value. */
    /*!\{*/
    bool getBoolValue(QString const &key, bool value) const; /*!< Of a bool. */
    int getIntValue(
        QString const &key, int value) const; /*!< Also a double, truncated; \a value when it is too large. */
    double getDoubleValue(QString const &key, double value) const; /*!< Also an integer. */
    int getEnumValue(QString const &key, int value) const; /*!< The index of an enumeration or a font. */
    unsigned int getRgbaValue(QString const &key, unsigned int const &value) const; /*!< Of a color, as 0xAARRGGBB. */
    QString getStringValue(QString const &key, QString const &value) const; /*!< The text form of any item. */
    QString getFontValue(QString const &key, QString const &value) const; /*!< Of a font alone, its name. */
    /*!\}*/

    /*! \name Writes
        Each makes \a value the user's value. A change refreshes the cache and is then announced by preferenceChanged();
        nothing is saved. A missing key is created in the category Internal, without refresh or notice, save that
        setEnumValue() announces an index other than 0. An item of another class is replaced by such a one, but never a
        locked item: it reports and stays. Only setStringValue() leaves items of other classes as they are. */
    /*!\{*/
    void setBoolValue(QString const &key, bool value); /*!< A bool. */
    void setIntValue(QString const &key, int value); /*!< The range of the item is not tested. */
    void setDoubleValue(QString const &key, double value); /*!< A double. */
    void setEnumValue(QString const &key, int value); /*!< The index of an enumeration or a font; not tested. */
    void setRgbaValue(QString const &key, unsigned int const &value); /*!< A color, as 0xAARRGGBB. */
    void setStringValue(QString const &key, QString const &value); /*!< A string. */
    /*!\}*/

    /*! Refreshes the cache and announces a change, as a write does. */
    void emitPreferenceChanged();
    /*! Stops preferenceChanged() for the rest of the store's life. */
    void disableEvents();

    /*! Deletes every item whose key begins with \a prefix, case-sensitively. Announces nothing. */
    void deleteAllKeyBeginingWith(QString const &prefix);
    /*! \name Defaults */
    /*!\{*/
    /*! Back to the default, unless locked or of the category Internal. Announces nothing and leaves the cached values
       as they are: emitPreferenceChanged() does both. */
    void restoreDefault(QString const &key);
    void restoreDefaults(); /*!< The same for all items. */
    /*!\}*/

    /*! The application's main store, a PR_CachedPreferences, loaded and with the cache filled; the caller owns it. */
    static PR_Preference *createPreference(QString name);
    /*! A store of machine-local settings, loaded; the caller owns it. Null when there is no folder for its file. */
    static PR_Preference *createLocalPreferences();

    /*! How the load at construction ended. */
    Error getErrorCode() const;
    /*! The text of that; empty when there is nothing to say. */
    MSG_Text getErrorMessage() const;
    /*! The text for the application's main store, tuPref. */
    static MSG_Text getPrefErrorMessage();

    /*! Legacy text file of the store. */
    QString getPath() const;
    /*! User's XML file; empty when the store has none. */
    QString getPathXml() const;
    /*! Reads the definitions and then the user's values, from the XML file or else from the legacy text file. Failures
        are reported; the result does not change getErrorCode(). */
    Error load();
    /*! Writes the user's values. A failure is reported and leaves the file as it was. */
    void save();
    /*! Whether the last save() reached the disk, and why not. */
    SaveStatus saveStatus() const;

    /*! Deletes the items and takes over clones of those of \a other. Announces nothing. */
    void copy(PR_Preference &other);

    /*! Whether the attribute "platform" of a definition admits it on this platform. */
    static bool isValidOnThisPlatform(QDomElement const &element);
    /*! Whether the attribute "mode" of a definition admits it in the host's mode. */
    static bool isValidInThisMode(QDomElement const &element);
    /*! Whether the host has the feature that an item serves. */
    static bool isValidInThisConfig(PR_PrefItem const *item);
    /*! Sets the three preferences that differ by flavour: false for the main product's habits. */
    void setPrefsFlavour(bool flavour);

    /*! Called before each announcement once a main store is created; does nothing here. */
    virtual void updateCache();

Q_SIGNALS:
    /*! Some value has changed. Emitted inside the write, the cache already refreshed. A receiver may delete the store,
        though not while it loads. */
    void preferenceChanged();

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

private:
    friend class PR_CachedPreferences;

    /*! Changes with every change to which items there are; a value never comes back, in no store. */
    quint64 itemSetStamp() const;

    static QString getPrefsXMLPath();
    static QString getLocalPrefsXMLPath();
    static QString getPrefsOverrideXMLPath();
    QString getPrefsSetXMLPath();
    Error loadValues();
    Error loadXml();
    void loadText(QString const &path);
    QByteArray userFileBytes() const;
    void keepPresentFile(QString const &path);

    template <class Item, class... Others, class Fallback>
    auto const &read(QString const &key, Fallback const &fallback) const;
    template <class... Items, class Value, class Conversion>
    Value readOr(QString const &key, Value value, Conversion conversion) const;
    template <class Item, class Value, class Make> void write(QString const &key, Value const &value, Make make);

    class Private;
    std::unique_ptr<Private> d;
};

/*! The application's main store; set by the host, null until then. */
extern BRIVANT_PREFERENCE_EXPORT PR_Preference *tuPref;

/*! The process's store of machine-local settings, created by the first call and kept; null when it could not be created
    then. */
BRIVANT_PREFERENCE_EXPORT PR_Preference *localPrefs();

#endif
