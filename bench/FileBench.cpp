// Loading and saving.

#include "KeySet.h"
#include "RatioTable.h"

#include "HostPlatform.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QSettings>

#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {
KeySet const &keySet(benchmark::State const &state)
{
    return KeySet::ofSize(int(state.range(0)));
}

void parseDom(benchmark::State &state)
{
    for (auto _ : state) {
        QDomDocument definitions;
        QDomDocument userFile;
        benchmark::DoNotOptimize(definitions.setContent(keySet(state).definitions(), false));
        benchmark::DoNotOptimize(userFile.setContent(keySet(state).userFile(), false));
    }
}

// With the destruction of the store.
void warmLoad(benchmark::State &state)
{
    for (auto _ : state)
        keySet(state).load();
}

// The first load of a process, or the first parse of its files, in a process of its own: this program again, which
// prints the processor time in nanoseconds and the page faults.
enum Measure { Time, Faults };

template <Measure measure> void firstOfProcess(benchmark::State &state, char const *what)
{
    KeySet const &set = keySet(state);
    for (auto _ : state) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), { QLatin1String(what), set.folder() });
        child.waitForFinished();
        QList<QByteArray> const numbers = child.readAllStandardOutput().split(' ');
        if (child.exitCode() != 0 || numbers.size() != 2)
            return state.SkipWithError("the process failed");
        state.SetIterationTime(numbers[measure].toDouble() / 1e9);
    }
}

void firstLoad(benchmark::State &state)
{
    firstOfProcess<Time>(state, "--first-load");
}

void firstParse(benchmark::State &state)
{
    firstOfProcess<Time>(state, "--first-parse");
}

void faultsOfFirstLoad(benchmark::State &state)
{
    firstOfProcess<Faults>(state, "--first-load");
}

void faultsOfFirstParse(benchmark::State &state)
{
    firstOfProcess<Faults>(state, "--first-parse");
}

// A run of the program beside this one, with the shipped files; what is measured is its processor time.
void runPrefs(benchmark::State &state, QStringList const &arguments)
{
    QString const program = QCoreApplication::applicationDirPath() + QStringLiteral("/prefs");
    auto const processorTime = [] {
        rusage usage = {};
        getrusage(RUSAGE_CHILDREN, &usage);
        return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
            + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    };
    for (auto _ : state) {
        double const before = processorTime();
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, arguments);
        if (!process.waitForFinished() || process.exitCode() != 0)
            return state.SkipWithError("prefs failed");
        state.SetIterationTime(processorTime() - before);
    }
}

void prefsHelp(benchmark::State &state)
{
    runPrefs(state, { QStringLiteral("--help") });
}

void prefsGet(benchmark::State &state)
{
    runPrefs(state,
        { QStringLiteral("--user"), QStringLiteral("/none"), QStringLiteral("get"),
            QStringLiteral("XSHEET_LINE_HOLD") });
}

// A store without definitions: every key of the user's file, in one of its two formats, becomes an item by itself.
void loadUndefined(
    benchmark::State &state, char const *tail, QByteArray const &head, char const *line, QByteArray const &end)
{
    QTemporaryDir const folder;
    QString const userName = folder.filePath(QStringLiteral("user.pref"));
    QDir().mkpath(folder.filePath(QStringLiteral("resources")));
    KeySet::write(folder.filePath(QStringLiteral("resources/prefs.xml")), "<preferences/>");
    QByteArray bytes = head;
    for (QString const &key : keySet(state).shuffledKeys())
        bytes += QString(QLatin1String(line)).arg(key).toUtf8();
    KeySet::write(folder.filePath(QLatin1String(tail)), bytes + end);
    HostPlatform::current().installFolder = folder.path();
    for (auto _ : state) {
        std::unique_ptr<PR_Preference> store(PR_Preference::createPreference(userName));
        state.PauseTiming();
        if (std::distance(store->begin(), store->end()) != keySet(state).size())
            state.SkipWithError("not all keys were read");
        store.reset();
        state.ResumeTiming();
    }
}

void loadUndefinedXml(benchmark::State &state)
{
    loadUndefined(state, "user-pref.xml", "<preferences>\n", " <int id=\"%1\" value=\"7\"/>\n", "</preferences>\n");
}

void loadUndefinedText(benchmark::State &state)
{
    loadUndefined(state, "user.pref", "", "%1 7\n", "");
}

void settingsLoad(benchmark::State &state)
{
    QTemporaryDir const folder;
    QString const file = folder.filePath(QStringLiteral("settings.ini"));
    {
        QSettings settings(file, QSettings::IniFormat);
        for (QString const &key : keySet(state).shuffledKeys())
            settings.setValue(key, QStringLiteral("a value"));
    }
    for (auto _ : state) {
        QSettings const settings(file, QSettings::IniFormat);
        benchmark::DoNotOptimize(settings.contains(QStringLiteral("X")));
        state.PauseTiming();
        // QSettings shares what it has read as long as the file is the same.
        QFile::rename(file, file + QStringLiteral(".old"));
        QFile::copy(file + QStringLiteral(".old"), file);
        QFile::remove(file + QStringLiteral(".old"));
        state.ResumeTiming();
    }
}

// 200 values: two in seven of 700.
void saveStore(benchmark::State &state, bool isShared)
{
    auto const store = KeySet::ofSize(700).load();
    store->setShared(isShared);
    for (auto _ : state)
        store->save();
    if (store->saveStatus().state != PR_Preference::SaveStatus::Saved)
        state.SkipWithError("not saved");
}

void save(benchmark::State &state)
{
    saveStore(state, false);
}

void saveShared(benchmark::State &state)
{
    saveStore(state, true);
}

// A look at a file that nobody has changed.
void reloadShared(benchmark::State &state)
{
    auto const store = KeySet::ofSize(700).load();
    store->setShared(true);
    for (auto _ : state)
        benchmark::DoNotOptimize(store->reloadShared());
}

// The least that a safe save costs the system; with a backup, the old file gets a second name first.
template <bool keepsBackup> void writeBytes(benchmark::State &state)
{
    QTemporaryDir const folder;
    QByteArray const file = folder.filePath(QStringLiteral("user.xml")).toLocal8Bit();
    QByteArray const newFile = file + ".new";
    QByteArray const backup = file + "~";
    QByteArray const newBackup = backup + ".new";
    QByteArray const &bytes = KeySet::ofSize(700).userFile();
    for (auto _ : state) {
        int const descriptor = open(newFile.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (write(descriptor, bytes.constData(), size_t(bytes.size())) != bytes.size() || fsync(descriptor) != 0)
            state.SkipWithError("cannot write");
        close(descriptor);
        if (keepsBackup && link(file.constData(), newBackup.constData()) == 0)
            std::rename(newBackup.constData(), backup.constData());
        std::rename(newFile.constData(), file.constData());
        int const directory = open(folder.path().toLocal8Bit().constData(), O_RDONLY | O_DIRECTORY);
        fsync(directory);
        close(directory);
    }
}

// Bytes of memory an item, beside the bytes of the texts in its files.
void memoryOfItems(benchmark::State &state)
{
    for (auto _ : state) {
        KeySet const &set = keySet(state);
        set.load();
        size_t const before = mallinfo2().uordblks;
        auto const store = set.load();
        double const used = double(mallinfo2().uordblks - before);
        state.counters["bytes_per_item"] = used / set.size();
        state.counters["bytes_of_file_per_item"] =
            double(set.definitions().size() + set.userFile().size()) / set.size();
    }
}

#define FIRST(function) BENCHMARK(function)->Arg(700)->Arg(7000)->Arg(70000)->Iterations(1)->UseManualTime()

FIRST(firstParse);
FIRST(firstLoad);
FIRST(faultsOfFirstParse);
FIRST(faultsOfFirstLoad);
BENCHMARK(parseDom)->Arg(700)->Arg(7000)->Arg(70000);
BENCHMARK(warmLoad)->Arg(700)->Arg(7000)->Arg(70000);
BENCHMARK(prefsHelp)->Iterations(20)->UseManualTime();
BENCHMARK(prefsGet)->Iterations(20)->UseManualTime();
BENCHMARK(loadUndefinedXml)->Arg(700)->Arg(70000);
BENCHMARK(loadUndefinedText)->Arg(700)->Arg(70000);
BENCHMARK(settingsLoad)->Arg(700)->Arg(7000)->Arg(70000);
BENCHMARK(save);
BENCHMARK(saveShared);
BENCHMARK(reloadShared);
BENCHMARK(writeBytes<false>);
BENCHMARK(writeBytes<true>);
BENCHMARK(memoryOfItems)->Arg(70000)->Iterations(1);

#define COMPARE(size)                                                                                                  \
    compareWithLimit("first load of a process, " size " : DOM parse", "firstLoad/" size, "firstParse/" size, 0.65),    \
        compareWithLimit(                                                                                              \
            "page faults of it, " size " : DOM parse", "faultsOfFirstLoad/" size, "faultsOfFirstParse/" size, 0.5),    \
        compareWithLimit("warm load, " size " : DOM parse", "warmLoad/" size, "parseDom/" size, 0.8),                  \
        compareWithLimit("QSettings load, " size " : DOM parse", "settingsLoad/" size, "parseDom/" size, 0)

int const registered[] = {
    COMPARE("700"),
    COMPARE("7000"),
    COMPARE("70000"),
    compareWithLimit("first load, a key of 70000 : of 700", "firstLoad/70000", "firstLoad/700", 1.6, 100),
    compareWithLimit("first DOM parse, a key of 70000 : of 700", "firstParse/70000", "firstParse/700", 0, 100),
    compareWithLimit(
        "load, an undefined key of 70000 : of 700", "loadUndefinedXml/70000", "loadUndefinedXml/700", 1.6, 100),
    compareWithLimit(
        "load, a line of text of 70000 : of 700", "loadUndefinedText/70000", "loadUndefinedText/700", 1.6, 100),
    compareWithLimit("prefs get : prefs --help", "prefsGet", "prefsHelp", 1.25),
    compareWithLimit("save of 200 values : write, sync, rename", "save", "writeBytes<false>", 1.4),
    compareWithLimit("save of a shared store : of one that is not", "saveShared", "save", 1.3),
    compareWithLimit("save of 200 values : the same with a backup", "save", "writeBytes<true>", 0),
};
} // namespace

int runFirstOfProcess(QString const &what, QString const &folder)
{
    bool const isLoad = what == QLatin1String("--first-load");
    auto const read = [&folder](char const *name) {
        QFile file(folder + QLatin1String(name));
        (void)file.open(QIODevice::ReadOnly);
        return file.readAll();
    };
    QByteArray const definitions = isLoad ? QByteArray() : read("/resources/prefs.xml");
    QByteArray const user = isLoad ? QByteArray() : read("/user-pref.xml");
    HostPlatform::current().installFolder = folder;
    rusage before = {}, after = {};
    timespec begin = {}, end = {};
    getrusage(RUSAGE_SELF, &before);
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &begin);
    if (isLoad) {
        (void)PR_Preference::createPreference(folder + QLatin1String("/user.pref"));
    } else {
        auto *const documents = new QDomDocument[2];
        documents[0].setContent(definitions, false);
        documents[1].setContent(user, false);
    }
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &end);
    getrusage(RUSAGE_SELF, &after);
    std::printf("%lld %ld", (end.tv_sec - begin.tv_sec) * 1000000000LL + end.tv_nsec - begin.tv_nsec,
        after.ru_minflt - before.ru_minflt);
    return 0;
}
