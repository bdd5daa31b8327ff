#include "BenchSupport.h"
#include "ExportedLimit.h"
#include "RatioTable.h"

#include "PR_CachedPreferences.h"
#include "PR_PrefItem.h"

#include <benchmark/benchmark.h>

#include <QHash>

#include <algorithm>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {
std::vector<QString> const &cachedKeys()
{
    static std::vector<QString> const keys{
#define CACHED_REF(Type, Name, KEY, Read) QStringLiteral(KEY),
#include "PR_CachedValues.def"
    };
    return keys;
}

void readExportedInt(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(exportedInt);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(readExportedInt);

void readCachedValue(benchmark::State &state)
{
    BenchStore const store;
    for (auto _ : state) {
        int value = PR_CachedPreferences::getXsheetLineHold();
        benchmark::DoNotOptimize(value);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(readCachedValue);

// The keys of all cached values, found one by one in a bare hash of the same keys.
void findCachedKeys(benchmark::State &state)
{
    QHash<QString, int> hash;
    std::vector<QString> keys;
    for (QString const &key : cachedKeys()) {
        hash.insert(key, int(hash.size()));
        keys.push_back(QString(key.constData(), key.size())); // the caller's own text
    }
    for (auto _ : state) {
        for (QString const &key : keys)
            benchmark::DoNotOptimize(hash.constFind(key));
    }
}
BENCHMARK(findCachedKeys);

void refreshCache(benchmark::State &state)
{
    BenchStore const store;
    for (auto _ : state)
        store->updateCache();
}
BENCHMARK(refreshCache);

// The store's keys in random order, in texts of the caller's own; all of them or those of one type.
std::vector<QString> keysOf(PR_Preference const &store, QString const &tag = QString())
{
    std::vector<QString> keys;
    for (PR_PrefItem const *item : store) {
        if (tag.isEmpty() || item->getTag() == tag)
            keys.push_back(QString(item->getKey().constData(), item->getKey().size()));
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
    return keys;
}

// The least that a refresh can cost: 267 values copied from addresses that are known.
void copyResolved(benchmark::State &state)
{
    std::vector<std::unique_ptr<int>> values;
    std::vector<int> targets(cachedKeys().size());
    std::vector<std::pair<int *, int const *>> copies;
    for (int &target : targets) {
        values.push_back(std::make_unique<int>(1));
        copies.emplace_back(&target, values.back().get());
    }
    for (auto _ : state) {
        for (auto const &[target, source] : copies)
            *target = *source;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(copyResolved);

void readByKey(benchmark::State &state)
{
    BenchStore const store;
    std::vector<QString> const keys = keysOf(*store);
    size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(store->getIntValue(keys[next], 3));
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
}
BENCHMARK(readByKey);

void writeIntegers(benchmark::State &state)
{
    BenchStore const store;
    int notices = 0;
    QObject::connect(&*store, &PR_Preference::preferenceChanged, [&notices] { ++notices; });
    std::vector<QString> const keys = keysOf(*store, QStringLiteral("int"));
    size_t next = 0;
    int value = 100000;
    for (auto _ : state) {
        store->setIntValue(keys[next], ++value);
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
    if (notices != int(state.iterations()))
        state.SkipWithError("a write was not announced");
}
BENCHMARK(writeIntegers);

int const registered[] = {
    compareWithLimit("read a cached value : an exported int", "readCachedValue", "readExportedInt", 1.5),
    compareWithLimit("refresh of 267 values : 267 hash finds", "refreshCache", "findCachedKeys", 0.25),
    compareWithLimit("refresh of 267 values : 267 resolved pointers copied", "refreshCache", "copyResolved", 4),
    compareWithLimit("effective write, refresh, receiver : keyed read", "writeIntegers", "readByKey", 10),
};
} // namespace
