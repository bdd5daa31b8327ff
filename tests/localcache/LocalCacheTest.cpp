#include "TestSupport.h"

#include "PR_LocalCachePref.h"
#include "PR_PrefItem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
/*! A local cache store in a folder of the test, its cache root beside it. */
class LocalCacheTest : public HostTest {
protected:
    LocalCacheTest()
    {
        host.specialFolders = { { 3, path(u"cache"_s) }, { 9, path(u"settings"_s) } };
        QDir().mkpath(root);
    }

    // A store on a user file with the given elements.
    std::unique_ptr<PR_LocalCachePref> load(QByteArray const &elements)
    {
        writeFile(u"settings/Brivant Animation/localcache.xml"_s, "<preferences>" + elements + "</preferences>");
        std::unique_ptr<PR_LocalCachePref> store(PR_LocalCachePref::createLocalCachePrefs());
        EXPECT_EQ(takeReports(), std::vector<std::string>());
        return store;
    }

    static QByteArray scene(QByteArray const &key, QByteArray const &lastUse)
    {
        return "<string id='" + key + "' value='{\"lastused\":\"" + lastUse + "\"}'/>";
    }

    static QByteArray limit(int count)
    {
        return "<int id='MAX_COUNT_SCENES_LOCAL_CACHE' value='" + QByteArray::number(count) + "'/>";
    }

    // Scenes e/s/01, e/s/02, ... with folders, each used a day after the one before.
    QByteArray scenes(int count) const
    {
        QByteArray elements;
        for (int i = 1; i <= count; ++i) {
            QByteArray const number = QByteArray::number(i).rightJustified(2, '0');
            elements += scene("e/s/" + number, "2024-01-" + number + "T10:00:00");
            QDir().mkpath(root + u"/e/s/"_s + QString::fromLatin1(number));
        }
        return elements;
    }

    static std::string keys(PR_LocalCachePref const &store)
    {
        QStringList keys;
        for (auto it = store.constBegin(); it != store.constEnd(); ++it)
            keys.append((*it)->getKey());
        return keys.join(u' ').toStdString();
    }

    std::string folders() const
    {
        return QDir(root + u"/e/s"_s).entryList(QDir::AllDirs | QDir::NoDotAndDotDot).join(u' ').toStdString();
    }

    QString const root = path(u"cache/Brivant Norvelle Local Cache"_s);
};
} // namespace

TEST_F(LocalCacheTest, LeavesRoomForTheCurrentSceneWithinTheLimit)
{
    struct {
        std::optional<int> limit;
        int others;
        char const *left; // of the others
    } const table[] = {
        { {}, 9, "01 02 03 04 05 06 07 08 09" },
        { {}, 11, "03 04 05 06 07 08 09 10 11" },
        { 10, 12, "04 05 06 07 08 09 10 11 12" },
        { 2, 3, "03" },
        { 1, 3, "" },
        { 0, 3, "" },
        { std::numeric_limits<int>::min(), 3, "" },
        { std::numeric_limits<int>::max(), 3, "01 02 03" },
    };
    for (auto const &row : table) {
        SCOPED_TRACE(row.limit.value_or(-1));
        QDir(root).removeRecursively();
        auto const store = load((row.limit ? limit(*row.limit) : QByteArray()) + scenes(row.others));
        size_t leaving = 0;
        for (auto const &scene : store->recentScenes())
            leaving += scene.willBeForgotten;
        store->setRecentScene(u"x/y/current"_s);
        EXPECT_EQ(folders(), row.left);
        EXPECT_EQ(
            leaving, size_t(row.others) - size_t(QString::fromLatin1(row.left).split(u' ', Qt::SkipEmptyParts).size()));
        EXPECT_EQ(size_t(std::distance(store->constBegin(), store->constEnd())),
            size_t(row.others) - leaving + (row.limit ? 2 : 1));
    }
}

TEST_F(LocalCacheTest, ForgetsScenesWithoutAFolderAndLeavesOtherKeysAlone)
{
    auto const store = load("<string id='LOCAL_CACHE_ROOT' value=''/><string id='a/b' value='x'/><string id='a/b/c/d' "
                            "value='x'/><string id='a/ /c' value='x'/><string id='a/b/c' value='x'/>"
        + scene("e/s/gone", "2024-01-01T10:00:00") + scenes(1));
    store->setRecentScene(u"a/b/c"_s); // its own folder is missing too
    store->setRecentScene(u"a/b/c"_s);
    EXPECT_EQ(keys(*store), "LOCAL_CACHE_ROOT a/ /c a/b a/b/c a/b/c/d e/s/01");

    store->save();
    std::unique_ptr<PR_LocalCachePref> const again(PR_LocalCachePref::createLocalCachePrefs());
    for (auto const &scene : again->recentScenes()) {
        if (scene.key == u"a/b/c") {
            EXPECT_LT(qAbs(scene.lastUse.secsTo(QDateTime::currentDateTime())), 60);
            EXPECT_FALSE(scene.hasFolder);
        }
    }
}

TEST_F(LocalCacheTest, AnUnreadableTimeTakesPartInTheOrder)
{
    QByteArray elements = limit(3) + scenes(1);
    for (QByteArray const &value : { QByteArray("no json"), QByteArray("[]"), QByteArray("{\"other\":1}") }) {
        QByteArray const name = QByteArray::number(value.size());
        elements += "<string id='e/s/x" + name + "' value='" + value + "'/>";
        QDir().mkpath(root + u"/e/s/x"_s + QString::fromLatin1(name));
    }
    load(elements)->setRecentScene(u"x/y/z"_s);
    EXPECT_EQ(QString::fromStdString(folders()).split(u' ').size(), 2);
    EXPECT_TRUE(QFileInfo(root + u"/e/s/01"_s).isDir()); // a known time is later than none
}

TEST_F(LocalCacheTest, NeverRemovesAnythingOutsideTheRoot)
{
    // What each key would lead to, and what must be left.
    writeFile(u"outside/precious"_s, "x");
    writeFile(u"cache/beside/precious"_s, "x");
    writeFile(u"cache/Brivant Norvelle Local Cache/e/s/cur/precious"_s, "x");
    QDir().mkpath(root + u"/l/m"_s);
    QFile::link(path(u"outside"_s), root + u"/l/m/link"_s); // goes as a link
    QFile::link(path(u""_s), root + u"/l/out"_s);
    writeFile(u"cache/Brivant Norvelle Local Cache/e/s/cur/x/y/precious"_s, "x");
    QFile::link(root + u"/e/s/cur"_s, root + u"/below"_s); // leads into the folder of the current scene
    QByteArray elements = limit(1);
    for (char const *key : { "../../outside", "../beside/.", "./../beside", "a/../..", "././.", "e/s/..", "e/./s",
             "l/m/link", "l/out/outside", "e/s/.", "below/x/y" })
        elements += scene(key, "2024-01-01T10:00:00");
    QDir().mkpath(root + u"/a"_s);
    auto const store = load(elements);
    store->setRecentScene(u"e/s/cur"_s);

    EXPECT_EQ(keys(*store), "MAX_COUNT_SCENES_LOCAL_CACHE e/s/cur");
    for (char const *left :
        { "outside/precious", "cache/beside/precious", "cache/Brivant Norvelle Local Cache/e/s/cur/precious",
            "cache/Brivant Norvelle Local Cache/e/s/cur/x/y/precious", "cache/Brivant Norvelle Local Cache/l/out" })
        EXPECT_TRUE(QFileInfo::exists(path(QString::fromLatin1(left)))) << left;
    EXPECT_FALSE(QFileInfo(root + u"/l/m/link"_s).isSymLink());

    // Without a root, a key names a folder below that of the system.
    host.specialFolders[3] = QString();
    QString const key = path(u"outside"_s).mid(1);
    auto const rootless = load(limit(1) + scene(key.toUtf8(), "2024-01-01T10:00:00"));
    EXPECT_EQ(rootless->getLocalCacheRoot(), QString());
    rootless->setRecentScene(u"a/b/c"_s);
    EXPECT_TRUE(QFileInfo::exists(path(u"outside/precious"_s)));
}

TEST_F(LocalCacheTest, TheFolderOfTheCurrentSceneStaysByWhateverName)
{
    // A lone surrogate and its replacement are one name on the disk; Qt takes ":x" for the name of a resource.
    QString const current = u"e/s/\uFFFD"_s;
    QString const alias = u"e/s/"_s + QChar(0xD800);
    for (QString const &folder : { current, u"e/s/:x"_s })
        QDir(u"/"_s).mkpath(root + u'/' + folder);
    auto const store = load(limit(1) + scene("e/s/:x", "2024-01-01T10:00:00"));
    store->setRecentScene(alias);
    store->setRecentScene(current);
    EXPECT_TRUE(QFileInfo(root + u'/' + current).isDir());
    EXPECT_FALSE(QFileInfo(root + u"/e/s/:x"_s).isDir());
    EXPECT_EQ(std::distance(store->constBegin(), store->constEnd()), 2);
}

TEST_F(LocalCacheTest, TheRootIsTheChosenFolderElseTheDefault)
{
    auto const store = load("");
    EXPECT_EQ(store->getLocalCacheRoot(), root);
    store->setLocalCacheRoot(u"/some/where/"_s);
    EXPECT_EQ(store->getLocalCacheRoot(), u"/some/where/"_s);
    store->setLocalCacheRoot(QString());
    EXPECT_EQ(store->getLocalCacheRoot(), root);
}

TEST_F(LocalCacheTest, StartsEmptyAndIsNotThereWithoutAFolder)
{
    std::unique_ptr<PR_LocalCachePref> const store(PR_LocalCachePref::createLocalCachePrefs());
    EXPECT_EQ(takeReports(),
        (std::vector<std::string>{ "5 Preference file not found: $/settings/Brivant Animation/localcache" }));
    EXPECT_EQ(keys(*store), "");

    host.specialFolders[9] = QString();
    EXPECT_EQ(PR_LocalCachePref::createLocalCachePrefs(), nullptr);
    EXPECT_EQ(localCachePrefs(), nullptr);
    host.specialFolders[9] = path(u"settings"_s);
    EXPECT_EQ(localCachePrefs(), nullptr); // the first answer stays
}
