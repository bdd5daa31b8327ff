// Reads and writes by key, and the operations that walk a whole store.

#include "BenchSupport.h"
#include "KeySet.h"
#include "RatioTable.h"

#include "PR_PrefItem.h"

#include <benchmark/benchmark.h>

#include <QHash>
#include <QSettings>

namespace {
// Calls the function once an iteration, with one of the keys after the other.
template <class Function>
void visitKeys(benchmark::State &state, std::vector<QString> const &keys, Function const &function)
{
    size_t next = 0;
    for (auto _ : state) {
        function(keys[next]);
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
}

KeySet const &keySet(benchmark::State const &state)
{
    return KeySet::ofSize(int(state.range(0)));
}

QHash<QString, int> bareHash(KeySet const &set)
{
    QHash<QString, int> hash;
    for (QString const &key : set.shuffledKeys())
        hash.insert(key, int(hash.size()));
    return hash;
}

void hashFind(benchmark::State &state)
{
    QHash<QString, int> const hash = bareHash(keySet(state));
    visitKeys(state, keySet(state).shuffledIntegers(),
        [&hash](QString const &key) { benchmark::DoNotOptimize(*hash.constFind(key)); });
}

void hashFindMissing(benchmark::State &state)
{
    QHash<QString, int> const hash = bareHash(keySet(state));
    visitKeys(state, keySet(state).missingKeys(),
        [&hash](QString const &key) { benchmark::DoNotOptimize(hash.constFind(key)); });
}

void getIntValue(benchmark::State &state)
{
    auto const store = keySet(state).load();
    visitKeys(state, keySet(state).shuffledIntegers(),
        [&store](QString const &key) { benchmark::DoNotOptimize(store->getIntValue(key, 3)); });
}

// One key again and again, by its text and by a typed key.
constexpr PR_Key<int> typedKey{ u"XSHEET_LINE_HOLD", 3, 1, 100 };

void readOneByText(benchmark::State &state)
{
    BenchStore const store;
    QString const key = typedKey.text();
    for (auto _ : state)
        benchmark::DoNotOptimize(store->getIntValue(key, 3));
}

void readOneTyped(benchmark::State &state)
{
    BenchStore const store;
    for (auto _ : state)
        benchmark::DoNotOptimize(store->value(typedKey));
}

void getIntValueMissing(benchmark::State &state)
{
    auto const store = keySet(state).load();
    visitKeys(state, keySet(state).missingKeys(),
        [&store](QString const &key) { benchmark::DoNotOptimize(store->getIntValue(key, 3)); });
}

void getInt(benchmark::State &state)
{
    auto const store = keySet(state).load();
    visitKeys(state, keySet(state).shuffledIntegers(),
        [&store](QString const &key) { benchmark::DoNotOptimize(store->getInt(key)); });
}

void settingsRead(benchmark::State &state)
{
    QTemporaryDir const folder;
    QSettings settings(folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    for (QString const &key : keySet(state).shuffledIntegers())
        settings.setValue(key, 3);
    visitKeys(state, keySet(state).shuffledIntegers(),
        [&settings](QString const &key) { benchmark::DoNotOptimize(settings.value(key).toInt()); });
}

// The least that a write can cost: find the key, store the value, tell one receiver.
void hashWrite(benchmark::State &state)
{
    QHash<QString, int> hash = bareHash(keySet(state));
    int notices = 0;
    Emitter sender;
    QObject::connect(&sender, &Emitter::changed, [&notices] { ++notices; });
    int value = 1 << 20;
    visitKeys(state, keySet(state).shuffledIntegers(), [&](QString const &key) {
        *hash.find(key) = ++value;
        Q_EMIT sender.changed();
    });
}

template <bool refreshes> void setIntValue(benchmark::State &state)
{
    auto const store = refreshes ? keySet(state).load() : keySet(state).loadOther();
    int notices = 0;
    QObject::connect(store.get(), &PR_Preference::preferenceChanged, [&notices] { ++notices; });
    int value = 1 << 20;
    visitKeys(state, keySet(state).shuffledIntegers(), [&](QString const &key) { store->setIntValue(key, ++value); });
    if (notices != int(state.iterations()))
        state.SkipWithError("a write was not announced");
}

void settingsWrite(benchmark::State &state)
{
    QTemporaryDir const folder;
    QSettings settings(folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    int value = 0;
    visitKeys(state, keySet(state).shuffledIntegers(), [&](QString const &key) { settings.setValue(key, ++value); });
}

void restoreDefaults(benchmark::State &state)
{
    auto const store = keySet(state).load();
    for (auto _ : state)
        store->restoreDefaults();
}

void copyStore(benchmark::State &state)
{
    auto const store = keySet(state).load();
    PR_Preference copy(*store);
    for (auto _ : state)
        copy.copy(*store);
}

// What the memory alone costs: as many records with texts that are shared, in the order of memory.
void copyRecords(benchmark::State &state)
{
    struct Record {
        QString key, shortDescription, longDescription;
        int values[10] = {};
    };
    std::vector<std::unique_ptr<Record>> records;
    for (QString const &key : keySet(state).shuffledKeys())
        records.emplace_back(new Record{ key, KeySet::ownText(key), KeySet::ownText(key + key) });
    std::vector<std::unique_ptr<Record>> copies;
    for (auto _ : state) {
        copies.clear();
        for (auto const &record : records)
            copies.push_back(std::make_unique<Record>(*record));
    }
}

void deleteByPrefix(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto store = keySet(state).load();
        state.ResumeTiming();
        store->deleteAllKeyBeginingWith(QStringLiteral("DRAWING_VIEW_B"));
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
}

BENCHMARK(readOneByText);
BENCHMARK(readOneTyped);

#define FOR_ALL_SIZES(name) BENCHMARK(name)->Arg(700)->Arg(7000)->Arg(70000)
FOR_ALL_SIZES(hashFind);
FOR_ALL_SIZES(hashFindMissing);
FOR_ALL_SIZES(hashWrite);
FOR_ALL_SIZES(getIntValue);
FOR_ALL_SIZES(getIntValueMissing);
FOR_ALL_SIZES(getInt);
FOR_ALL_SIZES(setIntValue<true>);
FOR_ALL_SIZES(setIntValue<false>);
FOR_ALL_SIZES(settingsRead);
FOR_ALL_SIZES(settingsWrite);
FOR_ALL_SIZES(restoreDefaults);
FOR_ALL_SIZES(copyStore);
FOR_ALL_SIZES(copyRecords);
FOR_ALL_SIZES(deleteByPrefix)->Iterations(10);

#define COMPARE(size)                                                                                                  \
    compareWithLimit("getIntValue, " size " : hash find", "getIntValue/" size, "hashFind/" size, 1.5),                 \
        compareWithLimit("getIntValue missing, " size " : hash find missing", "getIntValueMissing/" size,              \
            "hashFindMissing/" size, 2),                                                                               \
        compareWithLimit("getInt, " size " : hash find", "getInt/" size, "hashFind/" size, 1.5),                       \
        compareWithLimit("QSettings read, " size " : hash find", "settingsRead/" size, "hashFind/" size, 0),           \
        compareWithLimit(                                                                                              \
            "setIntValue with refresh, " size " : hash write, emit", "setIntValue<true>/" size, "hashWrite/" size, 6), \
        compareWithLimit(                                                                                              \
            "setIntValue without, " size " : hash write, emit", "setIntValue<false>/" size, "hashWrite/" size, 1.6),   \
        compareWithLimit("QSettings write, " size " : hash write, emit", "settingsWrite/" size, "hashWrite/" size, 0)

int const registered[] = {
    COMPARE("700"),
    COMPARE("7000"),
    COMPARE("70000"),
    compareWithLimit(
        "restoreDefaults, an item of 70000 : of 700", "restoreDefaults/70000", "restoreDefaults/700", 4, 100),
    compareWithLimit("read by a typed key : getIntValue", "readOneTyped", "readOneByText", 1.0),
    compareWithLimit("copy, an item of 70000 : of 700", "copyStore/70000", "copyStore/700", 4, 100),
    compareWithLimit("copying records, one of 70000 : of 700", "copyRecords/70000", "copyRecords/700", 0, 100),
    compareWithLimit(
        "delete by prefix, an item of 70000 : of 700", "deleteByPrefix/70000", "deleteByPrefix/700", 4, 100),
};
} // namespace
