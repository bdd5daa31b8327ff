#include "PR_RecentScenes_p.h"

#include "PR_PrefItem.h"

#include "PL_Folder_p.h"
#include "PL_FileSpec.h"
#include "UT_Json.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace {
QString lastUsedMember()
{
    return QStringLiteral("lastused");
}
} // namespace

PR_RecentScenes::PR_RecentScenes(QString const &root)
    : m_root(root)
{
}

bool PR_RecentScenes::isScene(QString const &key)
{
    QStringList const parts = key.split(QLatin1Char('/'));
    return parts.size() == 3
        && std::none_of(parts.begin(), parts.end(), [](QString const &part) { return part.trimmed().isEmpty(); });
}

QString PR_RecentScenes::valueOf(QDateTime const &lastUse)
{
    return UT_Json::serializeStr(QVariantMap{ { lastUsedMember(), lastUse.toString(Qt::ISODate) } });
}

QDateTime PR_RecentScenes::lastUseOf(QString const &value)
{
    bool ok = false;
    QVariant const json = UT_Json::parse(value, ok);
    return ok ? json.toMap().value(lastUsedMember()).toDateTime() : QDateTime();
}

QString PR_RecentScenes::folderOf(QString const &key) const
{
    return QDir::toNativeSeparators(m_root + QLatin1Char('/') + key);
}

void PR_RecentScenes::add(PR_PrefItem const *item)
{
    QString const key = item->getKey();
    if (isScene(key))
        m_scenes.push_back({ key, item->valueAsString(), PL_FileSpec(UT_String(folderOf(key))).IsFolder() });
}

std::vector<PR_RecentScenes::Scene> PR_RecentScenes::leaving(int limit) const
{
    std::vector<Scene> leaving;
    std::vector<std::pair<QDateTime, Scene const *>> kept;
    for (Scene const &scene : m_scenes) {
        if (scene.hasFolder)
            kept.emplace_back(QDateTime(), &scene);
        else
            leaving.push_back(scene);
    }

    // One more than there are above the limit: room for the current scene. In 64 bits for limits at either end.
    qint64 const excess = qint64(kept.size()) - limit + 1;
    if (excess < 1)
        return leaving;
    for (auto &[lastUse, scene] : kept)
        lastUse = lastUseOf(scene->value);
    std::stable_sort(kept.begin(), kept.end(), [](auto const &a, auto const &b) { return a.first < b.first; });
    for (qint64 i = 0; i < excess && i < qint64(kept.size()); ++i)
        leaving.push_back(*kept[size_t(i)].second);
    return leaving;
}

bool PR_RecentScenes::removeFolder(QString const &key, QString const &currentScene) const
{
    // Keys come from a file: neither parts such as ".." nor links may lead out of the root.
    QStringList const parts = key.split(QLatin1Char('/'));
    QFileInfo const info(folderOf(key)), currentInfo(folderOf(currentScene));
    PL_Folder const root(m_root), parent(info.path());
    if (parts.contains(QLatin1String(".")) || parts.contains(QLatin1String("..")) || m_root.isEmpty() || !root.isOpen()
        || !parent.isOpen() || !parent.isOrLiesBelow(root))
        return false;
    PL_Folder const currentParent(currentInfo.path());
    if (parent.isSame(currentParent) && info.fileName() == currentInfo.fileName())
        return false;
    PL_Folder const folder(parent, info.fileName()); // not open where only a link goes, and what it leads to stays
    PL_Folder const current(currentInfo.filePath());
    if (folder.isOpen()
        && (currentParent.isOrLiesBelow(folder) || current.isOrLiesBelow(folder) || folder.isOrLiesBelow(current)))
        return false;
    return parent.remove(info.fileName());
}
