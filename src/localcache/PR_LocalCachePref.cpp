#include "PR_LocalCachePref.h"
#include "PR_Preference_p.h"

#include "PR_PrefItem.h"

#include "PL_FileSpec.h"
#include "PL_Folder_p.h"
#include "UT_Json.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStringList>

#include <algorithm>
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

// ---- Scenes

struct Scene {
    QString key;
    QString value; // of its item: when it was last used
    bool hasFolder;
};

QString lastUsedMember()
{
    return QStringLiteral("lastused");
}

QDateTime lastUseOf(QString const &value)
{
    bool ok = false;
    QVariant const json = UT_Json::parse(value, ok);
    return ok ? json.toMap().value(lastUsedMember()).toDateTime() : QDateTime();
}

// Whether a key names a scene: three parts separated by "/", none of them blank.
bool isScene(QString const &key)
{
    auto const parts = QStringView(key).split(u'/');
    return parts.size() == 3
        && std::none_of(parts.begin(), parts.end(), [](QStringView part) { return part.trimmed().isEmpty(); });
}

// The folder of a scene's cache, with the platform's separators.
QString folderOf(QString const &root, QString const &key)
{
    return QDir::toNativeSeparators(root + QLatin1Char('/') + key);
}

// Of scenes by key, those that have to go so that one more fits within a limit: those without a folder and, of the
// others, the ones used least recently, earliest first.
std::vector<Scene> leavingOf(std::vector<Scene> const &scenes, int limit)
{
    std::vector<Scene> leaving;
    std::vector<std::pair<QDateTime, Scene const *>> kept;
    for (Scene const &scene : scenes) {
        if (scene.hasFolder)
            kept.emplace_back(QDateTime(), &scene);
        else
            leaving.push_back(scene);
    }
    // One more than there are above the limit: room for the current scene. In 64 bits for limits at either end.
    qint64 const count = qint64(kept.size());
    qint64 const excess = qBound<qint64>(0, count - limit + 1, count);
    if (excess == 0)
        return leaving;
    for (auto &[lastUse, scene] : kept)
        lastUse = lastUseOf(scene->value);
    std::stable_sort(kept.begin(), kept.end(), [](auto const &a, auto const &b) { return a.first < b.first; });
    std::for_each(kept.begin(), kept.begin() + excess, [&](auto const &each) { leaving.push_back(*each.second); });
    return leaving;
}

// Removes the folder of a scene, unless it lies outside of the root or holds the folder of the current one.
void removeFolder(QString const &rootPath, QString const &key, QString const &currentScene)
{
    // Keys come from a file: neither parts such as ".." nor links may lead out of the root.
    QStringList const parts = key.split(QLatin1Char('/'));
    QFileInfo const info(folderOf(rootPath, key)), currentInfo(folderOf(rootPath, currentScene));
    PL_Folder const root(rootPath), parent(info.path());
    if (parts.contains(QLatin1String(".")) || parts.contains(QLatin1String("..")) || rootPath.isEmpty()
        || !root.isOpen() || !parent.isOpen() || !parent.isOrLiesBelow(root))
        return;
    PL_Folder const currentParent(currentInfo.path());
    if (parent.isSame(currentParent) && info.fileName() == currentInfo.fileName())
        return;
    PL_Folder const folder(parent, info.fileName()); // not open where only a link goes, and what it leads to stays
    PL_Folder const current(currentInfo.filePath());
    bool const holdsCurrent = folder.isOpen()
        && (currentParent.isOrLiesBelow(folder) || current.isOrLiesBelow(folder) || folder.isOrLiesBelow(current));
    if (!holdsCurrent)
        (void)parent.remove(info.fileName());
}

// The scenes of a store, but for one of them.
std::vector<Scene> scenesOf(PR_LocalCachePref const &store, QString const &root, QString const &butFor = {})
{
    std::vector<Scene> scenes;
    for (auto item = store.constBegin(); item != store.constEnd(); ++item) {
        QString const key = (*item)->getKey();
        if (key != butFor && isScene(key))
            scenes.push_back({ key, (*item)->valueAsString(), PL_FileSpec(UT_String(folderOf(root, key))).IsFolder() });
    }
    return scenes;
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
    QString const now = QDateTime::currentDateTime().toString(Qt::ISODate);
    setStringValue(key, UT_Json::serializeStr(QVariantMap{ { lastUsedMember(), now } }));
}

int PR_LocalCachePref::maxCountScenes() const
{
    return getIntValue(QStringLiteral("MAX_COUNT_SCENES_LOCAL_CACHE"), 10);
}

std::vector<PR_LocalCachePref::RecentScene> PR_LocalCachePref::recentScenes()
{
    QString const root = getLocalCacheRoot();
    std::vector<Scene> const scenes = scenesOf(*this, root);
    QSet<QString> leaving;
    for (Scene const &scene : leavingOf(scenes, maxCountScenes()))
        leaving.insert(scene.key);
    std::vector<RecentScene> result;
    for (Scene const &scene : scenes)
        result.push_back({ scene.key, folderOf(root, scene.key), lastUseOf(scene.value), scene.hasFolder,
            leaving.contains(scene.key) });
    return result;
}

void PR_LocalCachePref::cleanOldScenes(QString const &currentScene)
{
    QString const root = getLocalCacheRoot();
    for (Scene const &scene : leavingOf(scenesOf(*this, root, currentScene), maxCountScenes())) {
        deleteKey(scene.key);
        if (scene.hasFolder)
            removeFolder(root, scene.key, currentScene);
    }
}

PR_Preference::Error PR_LocalCachePref::initPreferences()
{
    clear();
    return NoError;
}
