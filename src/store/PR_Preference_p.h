#ifndef PR_PREFERENCE_P_H
#define PR_PREFERENCE_P_H

#include "PR_ItemSet_p.h"
#include "PR_Preference.h"
#include "PR_UserFile_p.h"

#include <limits>
#include <optional>

/*! The state of a store, which no public header shows. */
class BRIVANT_PREFERENCE_NO_EXPORT PR_Preference::Private {
public:
    Private(QString const &name, bool local);

    void loadElement(PR_Preference &store, PR_UserFile::Element const &element);

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
    PR_IntItem fallbackInt{ PR_PrefItem::Internal, QStringLiteral("Dummy"), 0, std::numeric_limits<int>::min(),
        std::numeric_limits<int>::max() };
    PR_DoubleItem fallbackDouble{ PR_PrefItem::Internal, QStringLiteral("Dummy"), 0.0 };
    PR_RgbaItem fallbackRgba{ PR_PrefItem::Internal, QStringLiteral("Dummy"), 0U };
    PR_StringItem fallbackString{ PR_PrefItem::Internal, QStringLiteral("Dummy"), QString() };
    PR_EnumItem fallbackEnum{ PR_PrefItem::Internal, QStringLiteral("Dummy"), "enum" };

    SaveStatus saveStatus;
    // The user's file when it was last known to be good; one that is unchanged need not be read before it is replaced.
    PR_FileState goodFile;
    // After a load that failed before the user's values were read, or that could not put a good backup back, only the
    // first save makes a backup, so that the backup stays the user's file.
    bool loadFailed = false;
    bool backedUpSinceLoad = false;

    // The user's file as the preference set was looked for in it, so that one load parses it once.
    std::optional<PR_UserFile> userFile;
};

#endif
