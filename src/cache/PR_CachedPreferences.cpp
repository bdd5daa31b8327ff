#include "PR_CachedPreferences.h"
#include "PR_CacheRefresh_p.h"
#include "PR_Preference_p.h"

#include <cstdio>
#include <memory>
#include <utility>

// The values of all rows.
#define CACHED_REF(Type, Name, KEY, Read) Type PR_CachedPreferences::_##Name{};
#include "PR_CachedValues.def"

namespace {
// The defaults of the rows that have one.
#define CACHED_REF(Type, Name, KEY, Read)
#define CACHED_OR(Type, Name, KEY, Read, Default) auto const defaultOf##Name = Default;
#include "PR_CachedValues.def"

// The cached store that was constructed last; for the warning about a second one alone.
PR_CachedPreferences *newestStore = nullptr;
} // namespace

PR_CachedPreferences::PR_CachedPreferences(QString name)
    : PR_Preference(std::move(name), false, true)
{
    if (newestStore)
        std::fputs("Cannot instantiate two sets of CachedPreferences\n", stderr);
    newestStore = this;
}

PR_CachedPreferences::PR_CachedPreferences(PR_CachedPreferences &other) = default;

PR_CachedPreferences::~PR_CachedPreferences()
{
    newestStore = nullptr;
}

void PR_CachedPreferences::updateCache()
{
    UpdatePreferences(this);
}

void PR_CachedPreferences::UpdatePreferences(PR_Preference *store)
{
    if (!store)
        return;

    // A stamp is never given twice, so one that is still current also says that the store is the same.
    // Never destroyed: a host may change its store as late as from a destructor of a global object.
    static auto &current = *new std::shared_ptr<PR_CacheRefresh>;
    static quint64 stamp = 0;
    if (!current || stamp != Private::itemSetStamp(*store)) {
        auto const refresh = std::make_shared<PR_CacheRefresh>(*store);
#define CACHED_REF(Type, Name, KEY, Read) refresh->add(_##Name, KEY, &PR_Preference::Read);
#define CACHED_OR(Type, Name, KEY, Read, Default) refresh->add(_##Name, KEY, &PR_Preference::Read, defaultOf##Name);
#include "PR_CachedValues.def"
        current = refresh;
        stamp = Private::itemSetStamp(*store);
    }
    static quint64 lastRun = 0;
    quint64 const run = ++lastRun;
    current->copyValues();
    if (!current->rereadsValues())
        return;
    // An item of a host may write to the store while it is read. That refreshes all values anew, with rows of its own
    // when the set of items changed, and leaves nothing to do here.
    auto const refresh = current;
    refresh->rereadValues([run] { return run == lastRun; });
}

// Here and not beside the other stores: the store itself knows nothing of the cache.
PR_Preference *PR_Preference::createPreference(QString name)
{
    auto *const store = new PR_CachedPreferences(std::move(name));
    store->d->refreshesCache = true;
    store->emitPreferenceChanged();
    return store;
}
