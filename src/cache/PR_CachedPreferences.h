#ifndef PR_CACHEDPREFERENCES_H
#define PR_CACHEDPREFERENCES_H

#include "PR_Preference.h"
#include "brivantpreference_export.h"

#include <QString>

/*! The application's main store: its most read values are also kept in static variables.

    For each row of PR_CachedValues.def there are get<Name>(), a reference that stays valid while the library is loaded
    and shows every later refresh, and get<Name>Key(). Before the first refresh the values are 0, false or empty. All
    cached stores share them; they follow the store that was refreshed last. Reading one takes no lookup and no call;
    like the store they belong to the store's thread. */
class BRIVANT_PREFERENCE_EXPORT PR_CachedPreferences : public PR_Preference {
public:
    /*! Loads the store named \a name. Only a store from createPreference() refreshes by itself. A second cached store
        beside a living one prints a warning to stderr. */
    explicit PR_CachedPreferences(QString name);
    /*! As that of PR_Preference; the copy does not refresh the cached values by itself. */
    PR_CachedPreferences(PR_CachedPreferences &other);
    /*! The cached values stay as they are. */
    ~PR_CachedPreferences() override;

    /*! Refreshes all cached values from this store. */
    void updateCache() override;

    // The getters of all rows.
#define CACHED_REF(Type, Name, KEY, Read)                                                                              \
    static Type const &get##Name()                                                                                     \
    {                                                                                                                  \
        return _##Name;                                                                                                \
    }                                                                                                                  \
    static char const *get##Name##Key()                                                                                \
    {                                                                                                                  \
        return KEY;                                                                                                    \
    }
#include "PR_CachedValues.def"

private:
    static void UpdatePreferences(PR_Preference *store);

#define CACHED_REF(Type, Name, KEY, Read) static Type _##Name;
#include "PR_CachedValues.def"
};

#endif
