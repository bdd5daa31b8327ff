#ifndef PR_PREFERENCE_P_H
#define PR_PREFERENCE_P_H

#include "PR_ItemSet_p.h"
#include "PR_Preference.h"
#include "PR_XmlReader_p.h"

#include "MSG_Scope.h"
#include "PL_FileSlot_p.h"

#include <QCoreApplication>
#include <QHash>
#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <functional>
#include <optional>
#include <vector>

class PR_UserFileMerge;

Q_DECLARE_LOGGING_CATEGORY(lcMisuse)

/*! The state of a store, which no public header shows. */
class BRIVANT_PREFERENCE_NO_EXPORT PR_Preference::Private {
public:
    Private(QString const &name, bool local);

    /*! Changes with every change to which items a store has; a value never comes back, in no store. */
    static quint64 itemSetStamp(PR_Preference const &store) { return store.d->items.stamp(); }

    /*! \name The rules of the reads and writes by key */
    /*!\{*/
    template <class Item, class... Others, class Fallback>
    auto const &read(QString const &key, Fallback const &fallback) const;
    template <class... Items, class Value, class Conversion>
    Value readOr(QString const &key, Value value, Conversion conversion) const;
    template <class Item, class Value> void write(PR_Preference &store, QString const &key, Value const &value);
    void forgetFonts();
    /*! The text of a key, not shared with it. */
    static QString ownText(PR_KeyName const &key);
    /*!\}*/

    /*! \name Parts of a load and of a save */
    /*!\{*/
    Error loadValues(PR_Preference &store);
    void useBackup(PR_XmlFile &userFile);
    /*! The elements that a save writes. \a remark tells what had to be left out; empty when nothing had. */
    PR_XmlTree ownElements(QString &remark) const;
    PR_XmlTree ownElements() const;
    /*! Writes the elements, those of a shared store over what the file holds now. */
    PL_FileSlot::Result write(PR_XmlTree own, QString &remark);
    PL_FileSlot::Result writeShared(PR_XmlTree own, QString &remark);
    static QByteArray bytesOf(PR_Element const &root, QString &remark);
    static bool isDamaged(QString const &path);
    /*!\}*/

    /*! \name Announcements */
    /*!\{*/
    /*! Refreshes, tells the subscribers of a key, or all of them when it is null, and emits; a batch does it at its
     * end. */
    void announce(PR_Preference &store, QString const *key);
    /*! Tells subscribers alone, as nothing is to be announced. */
    void tell(QString const *key);
    /*! Notes in the log that a module uses a key wrongly, once for each key and kind. */
    static void noteMisuse(PR_ItemSet const &items, QString const &key, char const *what);
    /*!\}*/

    /*! \name Shared stores */
    /*!\{*/
    /*! Gives the items the values that others changed in the file; whether a value is another one now. */
    bool takeOver(PR_UserFileMerge const &merge);
    /*! Takes note of the text of the file as it was read or written, and of what the store would write for it; what it
       has changed and not written stays so. */
    void setBase(QByteArray const &text, PR_XmlTree own, PR_UserFileMerge const *unwritten = nullptr);
    /*!\}*/

    bool refreshesCache = false;
    Error error = NoError;
    QString path;
    QString pathXml;
    bool isLocal;
    bool emitsEvents = true;
    PR_ItemSet items;

    // What a reference read shows when there is no item of its type. Never part of the set, never changed.
    PR_KeyItem fallbackKey{ PR_PrefItem::Internal, QStringLiteral("Dummy"), 0 };
    PR_BoolItem fallbackBool{ PR_PrefItem::Internal, QStringLiteral("Dummy"), false };
    PR_IntItem fallbackInt{ PR_PrefItem::Internal, QStringLiteral("Dummy"), 0 };
    PR_DoubleItem fallbackDouble{ PR_PrefItem::Internal, QStringLiteral("Dummy"), 0.0 };
    PR_RgbaItem fallbackRgba{ PR_PrefItem::Internal, QStringLiteral("Dummy"), 0U };
    PR_StringItem fallbackString{ PR_PrefItem::Internal, QStringLiteral("Dummy"), QString() };
    PR_EnumItem fallbackEnum{ PR_PrefItem::Internal, QStringLiteral("Dummy"), "enum" };

    SaveStatus saveStatus;
    struct Subscriber {
        quint64 number; // in the order of the subscriptions
        QPointer<QObject> receiver;
        std::function<void()> check; // compares, and calls the receiver
        std::shared_ptr<bool> isActive;
    };
    QHash<QString, std::vector<Subscriber>> subscribers; // by key
    quint64 lastSubscriber = 0;
    int batches = 0;
    bool isAnnouncementDue = false; // at the end of the batch
    bool isTellingDue = false;

    PL_FileSlot slot; // of the user's file

    bool isShared = false;
    // The user's file as it was last read or written, as its text: most stores never look at it again.
    QByteArray baseText;
    bool isBaseBackup = false; // read in the place of a damaged file
    bool isBaseKnown = false; // not so after a load that failed before it
    bool isBaseOwn = false; // the file holds just what this store wrote
    bool hasTakenOver = false; // values of others, by a save that has not announced it yet
    PR_XmlTree ownBase; // what a shared store would have written right after that

    bool isLoading = false;
    // The user's file as the preference set was looked for in it, so that one load parses it once.
    std::optional<PR_XmlFile> userFile;
    // By key, the fonts of the user that a process without a list of fonts could not look up: their items have the
    // index 0. Such an item is saved under that name, or the user would lose the font.
    QHash<QString, QString> unresolvedFonts;
};

/*! What stores tell the user. The English text is also the source text of the translations. */
namespace PR_PreferenceMessages {
//: While reading. %1 is a path, here and in all messages below.
constexpr char const *CannotOpenForReading = QT_TRANSLATE_NOOP("PR_Preference", "Unable to open preference file (%1)");
constexpr char const *CannotParse = QT_TRANSLATE_NOOP("PR_Preference", "Unable to parse prefereces file (%1)");
constexpr char const *NoFileSpecified =
    QT_TRANSLATE_NOOP("PR_Preference", "TUPreference::load: No preference file specified");
constexpr char const *FileNotFound = QT_TRANSLATE_NOOP("PR_Preference", "Preference file not found: %1");
constexpr char const *DefaultFileNotFound =
    QT_TRANSLATE_NOOP("PR_Preference", "Default preference file not found: %1 ");
constexpr char const *BackupRestored = QT_TRANSLATE_NOOP(
    "PR_Preference", "Preference file %1 is empty or corrupted.\nBackup preference file has been restored.");
constexpr char const *BackupRead =
    QT_TRANSLATE_NOOP("PR_Preference", "Preference file %1 is empty or corrupted.\nIts backup has been read instead.");
constexpr char const *DefaultsLoaded = QT_TRANSLATE_NOOP(
    "PR_Preference", "Preference file %1 is empty or corrupted.\nDefault preferences will be loaded instead.");
//: While saving.
constexpr char const *CannotOpenForWriting = QT_TRANSLATE_NOOP("PR_Preference", "Unable to open preference file: %1");
constexpr char const *WriteError = QT_TRANSLATE_NOOP("PR_Preference", "Error while writing preference file: %1");
constexpr char const *NotInitialized = QT_TRANSLATE_NOOP("PR_Preference", "Could not initialize preferences.");

/*! A message from one of these texts; its marker is filled by arg(). */
inline MSG_Text text(char const *source)
{
    return MSG_Text(QString::fromLatin1(source), PR_Preference::tr(source));
}

/*! Reports one of these texts; one without a marker needs no path. */
inline void report(char const *source, MSG_Scope::Action action, QString const &path = {})
{
    MSG_Scope scope(QString::fromLatin1(source), PR_Preference::tr(source), action);
    if (QLatin1String(source).contains(QLatin1String("%1")))
        scope.arg(path);
}
} // namespace PR_PreferenceMessages

/*! The one store of a kind, created by the first call and kept, also when it is null. Null too for a call from inside
   of that first one, which comes from a receiver of its reports. After an exception the next call tries again. */
template <class Store> Store *storeOfProcess(Store *(*create)())
{
    static Store *store = nullptr;
    static bool isCreating = false;
    static bool isCreated = false;
    if (!isCreated && !isCreating) {
        QScopedValueRollback<bool> const creating(isCreating, true);
        store = create();
        isCreated = true;
    }
    return store;
}

#endif
