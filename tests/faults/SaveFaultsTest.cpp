#include "FaultTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>

#include <map>
#include <mutex>

#include <sys/mount.h>

using namespace Qt::StringLiterals;

namespace {
constexpr int NewSet = 4321;

// A system call of a save that strace disturbs.
struct Fault {
    QByteArray call;
    int occurrence;
    QByteArray kind;
};

QByteArray const killing = "signal=KILL";
} // namespace

class SaveFaultsTest : public FaultTest {
protected:
    // A file and a backup, in a folder of their own; gives the name of the store.
    QString prepare(QString const &folder) const
    {
        writeFile(folder + u"/user.xml"_s, ValueSet::userFile(1));
        writeFile(folder + u"/user.xml~"_s, ValueSet::userFile(2));
        return path(folder + u"/user"_s);
    }

    Outcome trace(QString const &store, QStringList const &options) const
    {
        return Program::run(u"strace"_s,
            QStringList{ u"-f"_s, u"-y"_s, u"-qq"_s, u"-o"_s, store + u".log"_s } + options + QStringList{ program }
                + arguments("save", store, { QString::number(NewSet) }));
    }

    // Every call that changes something in the folder, in an undisturbed run.
    std::vector<Fault> faults() const
    {
        QString const store = prepare(u"traced"_s);
        EXPECT_EQ(trace(store, { u"-e"_s, u"trace=%file,%desc"_s }).status, 0);
        std::vector<Fault> faults;
        std::map<QByteArray, int> occurrences;
        QRegularExpression const callName(u"^[0-9]+ +([a-z0-9_]+)\\("_s);
        QList<QByteArray> const changing{ "openat", "write", "fsync", "fchmod", "link", "rename", "unlink" };
        for (QByteArray const &line : readFile(u"traced/user.log"_s).split('\n')) {
            QByteArray const call = callName.match(QString::fromUtf8(line)).captured(1).toLatin1();
            int const occurrence = ++occurrences[call];
            bool const isOpened = call != "openat" || line.contains("O_CREAT");
            if (!changing.contains(call) || !isOpened || !line.contains(path(u"traced"_s).toUtf8()))
                continue;
            for (QByteArray const &kind : { killing, QByteArray("error=EIO") })
                faults.push_back({ call, occurrence, kind });
        }
        return faults;
    }
};

// That the library's own operations are all that the system sees; what each of their failures does, a test of the store
// tells.
TEST_F(SaveFaultsTest, LoseNothing)
{
    if (Program::run(u"strace"_s, { u"-qq"_s, u"-o"_s, path(u"log"_s), program }).status != 2)
        GTEST_SKIP() << "strace may not trace here";
    std::vector<Fault> const all = faults();
    EXPECT_GE(all.size(), 14U) << "a new file, its backup, two renames, their syncs";
    std::mutex mutex;
    Program::forEach(all.size(), [&](std::size_t i) {
        Fault const &fault = all[i];
        QString const folder = u"case%1"_s.arg(i);
        QString const store = prepare(folder);
        Outcome const outcome = trace(store,
            { u"-e"_s, u"trace="_s + QString::fromLatin1(fault.call), u"-e"_s,
                u"inject=%1:%2:when=%3"_s.arg(QString::fromLatin1(fault.call), QString::fromLatin1(fault.kind))
                    .arg(fault.occurrence) });
        int const file = ValueSet::inFile(store + u".xml"_s);
        int const backup = ValueSet::inFile(store + u".xml~"_s);
        Outcome const recovery = run("recover", store, { u"3"_s });
        int const found = recovery.output.split('\n')[0].toInt();
        QStringList const left = newFiles(path(folder));
        std::lock_guard const lock(mutex);
        SCOPED_TRACE(
            fault.call.toStdString() + ' ' + std::to_string(fault.occurrence) + ' ' + fault.kind.toStdString());
        EXPECT_TRUE(file == 1 || file == NewSet) << file;
        EXPECT_TRUE(backup == 1 || backup == 2) << backup;
        EXPECT_TRUE(found == NewSet || (found == 1 && outcome.status != 0)) << found;
        EXPECT_TRUE(recovery.output.endsWith("\n3\n")) << recovery.errors.constData();
        EXPECT_EQ(left, QStringList());
    });
}

TEST_F(SaveFaultsTest, FullDiskKeepsFileAndBackupOverFailingSaves)
{
    QString const disk = path(u"disk"_s);
    QDir().mkpath(disk);
    QByteArray const mountPoint = disk.toUtf8();
    if (mount("tmpfs", mountPoint.constData(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no file system can be mounted here: the limits of a file's size stand for it";
    auto const unmount = qScopeGuard([&] { umount2(mountPoint.constData(), MNT_DETACH); });

    int const pageSize = 4096; // the new file takes two
    for (int const freePages : { 0, 1 }) {
        SCOPED_TRACE(freePages);
        writeFile(u"disk/user.xml"_s, ValueSet::userFile(1));
        writeFile(u"disk/user.xml~"_s, ValueSet::userFile(2));
        QFile filler(path(u"disk/filler"_s));
        ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(pageSize, ' ')) == pageSize) { }
        ASSERT_TRUE(filler.resize((filler.size() / pageSize - freePages) * pageSize));

        for (int process = 0; process < 2; ++process) {
            Outcome const outcome = run("save", disk + u"/user"_s, { QString::number(NewSet), u"2"_s });
            EXPECT_EQ(outcome.status, 1);
            EXPECT_EQ(outcome.errors.count("not saved: No space left on device"), 2) << outcome.errors.constData();
            EXPECT_EQ(readFile(u"disk/user.xml"_s), ValueSet::userFile(1));
            EXPECT_EQ(readFile(u"disk/user.xml~"_s), ValueSet::userFile(2));
        }
        EXPECT_TRUE(filler.remove());
        EXPECT_EQ(run("recover", disk + u"/user"_s, { u"3"_s }).output, "1\n3\n");
    }
}
