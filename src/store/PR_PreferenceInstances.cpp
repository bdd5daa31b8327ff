#include "PR_Preference_p.h"

#include "PL_FileSpec.h"

PR_Preference *tuPref = nullptr;

namespace {
QString xmlPathOf(QString const &name, bool local)
{
    if (name.isEmpty())
        return {};
    QString path = name + QLatin1String(".xml");
    return path.replace(
        QLatin1String(".pref.xml"), QLatin1String(local ? "-localpref.xml" : "-pref.xml"), Qt::CaseSensitive);
}
} // namespace

PR_Preference::Private::Private(QString const &name, bool local)
    : path(name)
    , pathXml(xmlPathOf(name, local))
    , isLocal(local)
{
}

PR_Preference::PR_Preference(QString name, bool local, bool loadNow)
    : d(std::make_unique<Private>(name, local))
{
    static_assert(sizeof(PR_Preference) == sizeof(QObject) + sizeof(void *));
    if (loadNow)
        init();
}

PR_Preference::PR_Preference(PR_Preference &other)
    : QObject()
    , d(std::make_unique<Private>(other.d->path, other.d->isLocal))
{
    // The user's file is as much at risk from the copy.
    d->slot = other.d->slot;
    copy(other);
}

PR_Preference::~PR_Preference()
{
    for (auto const &list : std::as_const(d->subscribers)) {
        for (Private::Subscriber const &each : list)
            *each.isActive = false;
    }
    // While the store is whole: the destructor of a host's item may look into it.
    clear();
}

void PR_Preference::init()
{
    d->error = load();
}

void PR_Preference::copy(PR_Preference &other)
{
    if (&other == this)
        return;
    clear();
    d->unresolvedFonts = other.d->unresolvedFonts;
    d->items.reserve(other.d->items.count());
    other.d->items.visit([this](PR_PrefItem *item) { d->items.insert(std::unique_ptr<PR_PrefItem>(item->clone())); });
    d->tell(nullptr);
}

PR_Preference *PR_Preference::createLocalPreferences()
{
    PL_FileSpec folder;
    folder.IFileSpec(PL_FileSpec::LocalPreferenceFolder);
    QString const path = folder.GetFilePath().ToQString();
    if (path.isEmpty())
        return nullptr;
    return new PR_Preference(path + QLatin1String("/Brivant Animation/localpref"), true, true);
}

PR_Preference *localPrefs()
{
    return storeOfProcess(&PR_Preference::createLocalPreferences);
}

QString PR_Preference::trUtf8(char const *source, char const *disambiguation)
{
    return tr(source, disambiguation);
}

QString PR_Preference::trUtf8(char const *source, char const *disambiguation, int n)
{
    return tr(source, disambiguation, n);
}
