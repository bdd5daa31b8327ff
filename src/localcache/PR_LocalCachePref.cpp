#include "PR_LocalCachePref.h"
#include "PR_Preference_p.h"
#include "PR_RecentScenes_p.h"

#include "PR_PrefItem.h"

#include "PL_FileSpec.h"

#include <QSet>

#include <utility>

namespace {
QString rootKey()
{
    return QStringLiteral("LOCAL_CACHE_ROOT");
}

QString specialFolder(PL_FileSpec::SpecialFolderType folder)
{
    PL_FileSpec spec;
    spec.IFileSpec(folder);
    return spec.GetFilePath().ToQString();
}
} // namespace

PR_LocalCachePref *PR_LocalCachePref::createLocalCachePrefs()
{
    QString const folder = specialFolder(PL_FileSpec::LocalCacheSettingsFolder);
    if (folder.isEmpty())
        return nullptr;
    auto *const store = new PR_LocalCachePref(folder + QLatin1String("/Brivant Animation/localcache"));
    // Only now, so that the load runs this class's own initPreferences().
    store->init();
    return store;
}

PR_LocalCachePref *localCachePrefs()
{
    return storeOfProcess(&PR_LocalCachePref::createLocalCachePrefs);
}

PR_LocalCachePref::PR_LocalCachePref(QString const &name)
    : PR_Preference(name, false, false)
{
}

PR_LocalCachePref::~PR_LocalCachePref() = default;

QString PR_LocalCachePref::getLocalCacheRoot()
{
    QString const chosen = getStringValue(rootKey(), QString());
    if (!chosen.isEmpty())
        return chosen;
    QString const folder = specialFolder(PL_FileSpec::DefaultLocalCacheFolder);
    return folder.isEmpty() ? folder : QString(folder + QLatin1String("/Brivant Norvelle Local Cache"));
}

void PR_LocalCachePref::setLocalCacheRoot(QString const &path)
{
    setStringValue(rootKey(), path);
}

void PR_LocalCachePref::setRecentScene(QString const &key)
{
    cleanOldScenes(key);
    setStringValue(key, PR_RecentScenes::valueOf(QDateTime::currentDateTime()));
}

int PR_LocalCachePref::maxCountScenes() const
{
    return getIntValue(QStringLiteral("MAX_COUNT_SCENES_LOCAL_CACHE"), 10);
}

std::vector<PR_LocalCachePref::RecentScene> PR_LocalCachePref::recentScenes()
{
    PR_RecentScenes scenes(getLocalCacheRoot());
    for (PR_PrefItem const *item : std::as_const(*this))
        scenes.add(item);
    QSet<QString> leaving;
    for (PR_RecentScenes::Scene const &scene : scenes.leaving(maxCountScenes()))
        leaving.insert(scene.key);
    std::vector<RecentScene> result;
    for (PR_RecentScenes::Scene const &scene : scenes.all())
        result.push_back({ scene.key, scenes.folderOf(scene.key), PR_RecentScenes::lastUseOf(scene.value),
            scene.hasFolder, leaving.contains(scene.key) });
    return result;
}

void PR_LocalCachePref::cleanOldScenes(QString const &currentScene)
{
    PR_RecentScenes scenes(getLocalCacheRoot());
    for (PR_PrefItem const *item : std::as_const(*this)) {
        if (item->getKey() != currentScene)
            scenes.add(item);
    }
    for (PR_RecentScenes::Scene const &scene : scenes.leaving(maxCountScenes())) {
        deleteKey(scene.key);
        if (scene.hasFolder)
            scenes.removeFolder(scene.key, currentScene);
    }
}

PR_Preference::Error PR_LocalCachePref::initPreferences()
{
    clear();
    return NoError;
}
