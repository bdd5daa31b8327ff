#include "TestSupport.h"

#include "PR_BoolItem.h"
#include "PR_CachedPreferences.h"
#include "PR_IntItem.h"

#include <QDir>
#include <QFile>

#include <functional>
#include <random>

using namespace Qt::StringLiterals;

namespace {
// What the cache showed before any store existed: taken while this program's static objects are built.
bool const wasEmptyAtLoad = PR_CachedPreferences::getXsheetLineHold() == 0 && !PR_CachedPreferences::getSoftRenderGPU()
    && PR_CachedPreferences::getTouchSpeed() == 0.0 && PR_CachedPreferences::getCachePath().isEmpty()
    && PR_CachedPreferences::getNVRigCacheMissingColor() == 0;

// The accessors whose value is not what reading the row's key anew gives.
std::vector<std::string> staleAccessors(PR_Preference const &store)
{
    std::vector<std::string> stale;
    auto const compare = [&stale](char const *name, auto const &cached, auto const &read) {
        if (!(cached == std::decay_t<decltype(cached)>(read)))
            stale.emplace_back(name);
    };
#define CACHED_REF(Type, Name, KEY, Read)                                                                              \
    compare(#Name, PR_CachedPreferences::get##Name(), store.Read(QStringLiteral(KEY)));
#define CACHED_OR(Type, Name, KEY, Read, Default)                                                                      \
    compare(#Name, PR_CachedPreferences::get##Name(), store.Read(QStringLiteral(KEY), Default));
#include "PR_CachedValues.def"
    return stale;
}

std::vector<QString> cachedKeys()
{
    return {
#define CACHED_REF(Type, Name, KEY, Read) QStringLiteral(KEY),
#include "PR_CachedValues.def"
    };
}

/*! A test of main stores on the shipped definitions. */
class CacheTest : public HostTest {
protected:
    using Store = std::unique_ptr<PR_Preference>;

    CacheTest()
    {
        QDir().mkpath(host.installFolder);
        QFile::link(QStringLiteral(BRIVANT_RESOURCES), host.installFolder + u"/resources"_s);
        host.hasMorphing = true;
    }

    Store create(QString const &name)
    {
        Store store(PR_Preference::createPreference(path(name)));
        reports.clear(); // that there is no user file yet
        return store;
    }
};
} // namespace

TEST_F(CacheTest, ShowsNothingBeforeTheFirstRefresh)
{
    EXPECT_TRUE(wasEmptyAtLoad);
}

TEST_F(CacheTest, EqualsPlainReadsAfterAnySequenceOfChanges)
{
    unsigned int const seed = std::random_device()();
    RecordProperty("seed", std::to_string(seed));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    auto const below = [&random](int end) { return int(random() % unsigned(end)); };
    std::vector<QString> const keys = cachedKeys();
    std::vector<QString> const texts{ u"Y"_s, u"no"_s, u"12"_s, u"2.5"_s, u"1 2 3 255"_s, u""_s, u"other"_s };

    Store first = create(u"first.pref"_s);
    testing::internal::CaptureStderr();
    Store second = create(u"second.pref"_s);
    for (int step = 0; step < 3000; ++step) {
        Store &store = below(2) ? first : second;
        QString const key = keys[size_t(below(int(keys.size())))];
        std::function<void()> const changes[] = {
            [&] { store->setBoolValue(key, below(2)); },
            [&] { store->setIntValue(key, below(100)); },
            [&] { store->setDoubleValue(key, below(100) / 8.0); },
            [&] { store->setEnumValue(key, below(5)); },
            [&] { store->setRgbaValue(key, unsigned(random())); },
            [&] { store->setStringValue(key, texts[size_t(below(int(texts.size())))]); },
            [&] {
                store->deleteAllKeyBeginingWith(key.left(6));
                store->setStringValue(key, texts[size_t(below(int(texts.size())))]);
            },
            [&] { store->restoreDefault(key); },
            [&] {
                if (below(20) == 0)
                    store->restoreDefaults();
            },
            [&] {
                if (below(20) == 0) {
                    store->save();
                    store->load();
                }
            },
            [&] {
                if (below(20) == 0)
                    store->copy(store == first ? *second : *first);
            },
            [&] {
                if (below(20) == 0) {
                    store.reset(); // a new store may stand at the same address
                    store = create(u"third.pref"_s);
                }
            },
            [&] {
                // Past the store: the next refresh sees it all the same.
                if (auto *item = dynamic_cast<PR_IntItem *>(store->find(key)))
                    item->setValue(below(100));
            },
        };
        int const change = below(int(std::size(changes)));
        changes[change]();
        store->emitPreferenceChanged();
        ASSERT_EQ(staleAccessors(*store), std::vector<std::string>())
            << "change " << change << " of " << key << ", step " << step;
    }
    testing::internal::GetCapturedStderr();
    reports.clear();
}

TEST_F(CacheTest, AReceiverFindsTheCacheRefreshedAndAnUnchangedWriteIsSilent)
{
    Store const store = create(u"user.pref"_s);
    std::vector<int> seen;
    QObject::connect(store.get(), &PR_Preference::preferenceChanged,
        [&seen] { seen.push_back(PR_CachedPreferences::getXsheetLineHold()); });
    for (int value : { 7, 7, 8 })
        store->setIntValue(u"XSHEET_LINE_HOLD"_s, value);
    EXPECT_EQ(seen, (std::vector<int>{ 7, 8 }));

    store->disableEvents();
    store->setIntValue(u"XSHEET_LINE_HOLD"_s, 9);
    EXPECT_EQ(PR_CachedPreferences::getXsheetLineHold(), 9);
    EXPECT_EQ(seen.size(), 2U);
}

TEST_F(CacheTest, OnlyTheStoreOfTheApplicationRefreshesByItself)
{
    Store const mainStore = create(u"user.pref"_s);
    mainStore->setIntValue(u"XSHEET_LINE_HOLD"_s, 5);
    testing::internal::CaptureStderr();
    PR_CachedPreferences other(path(u"other.pref"_s));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Cannot instantiate two sets of CachedPreferences\n");
    reports.clear();

    testing::internal::CaptureStderr();
    PR_CachedPreferences copy(other);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    for (PR_CachedPreferences *store : { &other, &copy }) {
        store->setIntValue(u"XSHEET_LINE_HOLD"_s, 6);
        EXPECT_EQ(PR_CachedPreferences::getXsheetLineHold(), 5);
    }
    other.updateCache();
    EXPECT_EQ(PR_CachedPreferences::getXsheetLineHold(), 6);
}

TEST_F(CacheTest, KeepsItsValuesWhenTheStoreIsGone)
{
    create(u"user.pref"_s)->setIntValue(u"XSHEET_LINE_HOLD"_s, 11);
    EXPECT_EQ(PR_CachedPreferences::getXsheetLineHold(), 11);
    testing::internal::CaptureStderr();
    create(u"user.pref"_s);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); // one at a time is no second one
}

TEST_F(CacheTest, FallsBackWhereTheDefinitionsLackAKey)
{
    host.installFolder = path(u"bare"_s);
    writeFile(u"bare/resources/prefs.xml"_s, "<preferences/>");
    Store const store = create(u"user.pref"_s);
    EXPECT_EQ(staleAccessors(*store), std::vector<std::string>());
    EXPECT_EQ(PR_CachedPreferences::getOpenGLPlaybackCacheSizeMb(), 500);
    EXPECT_EQ(PR_CachedPreferences::getPaperZoomMagnifyOffsetX(), -15);
    EXPECT_EQ(PR_CachedPreferences::getNVRigCacheItemPresentColor(), 0xFF3DADDDU);
    EXPECT_EQ(PR_CachedPreferences::getToolsSoftRenderMaxNumTiles(), 16384.0);
    EXPECT_EQ(PR_CachedPreferences::getXsheetDefaultColumnWidth(), 0);

    host.installFolder = path(u"install"_s);
    host.hasMorphing = false;
    Store const full = create(u"other.pref"_s);
    EXPECT_EQ(PR_CachedPreferences::getMorphingQuality(), 0.0);
    full->setBoolValue(u"SP_ENABLE_PREVIEW_WASH"_s, !full->getBoolValue(u"SP_ENABLE_PREVIEW_WASH"_s, false));
    EXPECT_EQ(PR_CachedPreferences::getDirtyPreviewWashEnable(),
        full->getBoolValue(u"SP_ENABLE_PREVIEW_WASH"_s, false) ? 1.0 : 0.0);
}
