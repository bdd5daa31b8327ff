#include "RatioTable.h"

#include "HostPlatform.h"
#include "PL_FileSpec.h"
#include "PR_LocalCachePref.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace {
constexpr int sceneCount = 10000;

QString sceneKey(int number)
{
    return QStringLiteral("environment/scene/%1").arg(number);
}

// A cache root with a folder for each scene; made once.
QTemporaryDir const &cacheRoot()
{
    static QTemporaryDir const root;
    static bool made = false;
    for (int i = 0; !made && i < sceneCount; ++i)
        QDir(root.path()).mkpath(sceneKey(i));
    made = true;
    return root;
}

void testFolders(benchmark::State &state)
{
    std::vector<UT_String> folders;
    for (int i = 0; i < sceneCount; ++i)
        folders.emplace_back(cacheRoot().filePath(sceneKey(i)));
    for (auto _ : state) {
        for (UT_String const &folder : folders)
            benchmark::DoNotOptimize(PL_FileSpec(folder).IsFolder());
    }
}
BENCHMARK(testFolders)->Unit(benchmark::kMillisecond);

void setRecentScene(benchmark::State &state)
{
    QTemporaryDir const settings;
    HostPlatform &host = HostPlatform::current();
    host.specialFolders[PL_FileSpec::LocalCacheSettingsFolder] = settings.path();
    host.report = [](HostReport const &) {};
    QDir(settings.path()).mkpath(QStringLiteral("Brivant Animation"));
    QFile file(settings.filePath(QStringLiteral("Brivant Animation/localcache.xml")));
    if (!file.open(QIODevice::WriteOnly))
        return state.SkipWithError("cannot write");
    file.write("<preferences><int id=\"MAX_COUNT_SCENES_LOCAL_CACHE\" value=\"20000\"/>");
    for (int i = 0; i < sceneCount; ++i)
        file.write("<string id=\"" + sceneKey(i).toUtf8()
            + "\" value=\"{&quot;lastused&quot;:&quot;2024-01-02T03:04:05&quot;}\"/>");
    file.write("</preferences>");
    file.close();
    std::unique_ptr<PR_LocalCachePref> const store(PR_LocalCachePref::createLocalCachePrefs());
    store->setLocalCacheRoot(cacheRoot().path());
    for (auto _ : state)
        store->setRecentScene(QStringLiteral("environment/scene/now"));
}
BENCHMARK(setRecentScene)->Unit(benchmark::kMillisecond);

int const registered =
    compareWithLimit("setRecentScene, 10000 scenes : the folder tests", "setRecentScene", "testFolders", 2);
} // namespace
