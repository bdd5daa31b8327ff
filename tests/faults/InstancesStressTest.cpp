#include "FaultTest.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QThread>

using namespace Qt::StringLiterals;

class InstancesStressTest : public FaultTest {
protected:
    InstancesStressTest() { writeFile(u"case/user.xml"_s, ValueSet::userFile(1)); }

    void start(QProcess &process, char const *verb, QStringList const &more = {}) const
    {
        Program::prepare(process, program, arguments(verb, store, more));
        process.start();
        ASSERT_TRUE(process.waitForStarted());
    }

    void expectWholeFiles() const
    {
        EXPECT_GT(ValueSet::inFile(store + u".xml"_s), ValueSet::Default);
        int const backup = ValueSet::inFile(store + u".xml~"_s);
        EXPECT_TRUE(backup > ValueSet::Default || backup == ValueSet::NoFile) << backup;
    }

    QString const store = path(u"case/user"_s);
};

TEST_F(InstancesStressTest, TwoSavingOneFileNeverLeaveItTorn)
{
    QProcess first;
    QProcess second;
    QProcess watcher;
    start(watcher, "watch");
    start(first, "save", { u"1000"_s, u"200"_s });
    start(second, "save", { u"5000"_s, u"200"_s });
    for (QProcess *process : { &first, &second, &watcher }) {
        if (process == &watcher)
            watcher.closeWriteChannel();
        EXPECT_TRUE(process->waitForFinished(60000));
        EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().constData();
    }
    std::printf("two instances: %s", watcher.readAllStandardOutput().constData());
    expectWholeFiles();
    EXPECT_EQ(newFiles(path(u"case"_s)), QStringList());
}

TEST_F(InstancesStressTest, NewFilesOfKilledProcessesDoNoHarmAndGo)
{
    for (int i = 1; i <= 20; ++i) {
        QProcess process;
        start(process, "save", { QString::number(i * 1000), u"900000"_s });
        QThread::msleep(static_cast<unsigned long>(15 + i * 7 % 23));
        process.kill();
        process.waitForFinished();
        expectWholeFiles();
    }
    writeFile(u"case/user.xml.new-abcdef"_s, "<preferences><string id=\"FIRST\"");
    Outcome const outcome = run("recover", store, { u"3"_s });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.output.endsWith("\n3\n")) << outcome.output.constData();
    EXPECT_EQ(newFiles(path(u"case"_s)), QStringList());
}

// Stores that share a file, some of them killed: what one said to have saved of its own keys is there.
TEST_F(InstancesStressTest, SharedStoresLoseNothing)
{
    bool const isLong = qEnvironmentVariableIsSet("BRIVANT_ALL_FAULTS");
    QString const shared = path(u"case/shared"_s);
    int const processes = 6, count = isLong ? 2000 : 60;
    std::vector<std::unique_ptr<QProcess>> hosts;
    for (int i = 1; i <= processes; ++i) {
        hosts.push_back(std::make_unique<QProcess>());
        Program::prepare(
            *hosts.back(), program, arguments("share", shared, { QString::number(i), QString::number(count) }));
        hosts.back()->start();
    }
    QThread::msleep(isLong ? 4000 : 150);
    for (int i : { 1, 4 })
        hosts[size_t(i)]->kill();
    for (auto const &each : hosts)
        EXPECT_TRUE(each->waitForFinished(120000));

    QMap<QString, int> found;
    Outcome const values = run("values", shared);
    EXPECT_EQ(values.status, 0);
    for (QByteArray const &line : values.output.split('\n')) {
        auto const middle = line.indexOf('=');
        found.insert(QString::fromUtf8(line.left(middle)), line.mid(middle + 1).toInt());
    }
    for (int number = 1; number <= processes; ++number) {
        QProcess &each = *hosts[size_t(number) - 1];
        EXPECT_TRUE(each.exitStatus() == QProcess::CrashExit || each.exitCode() == 0)
            << each.readAllStandardError().constData();
        QList<QByteArray> saves, saved; // the values of the last save that began, and of the last one that ended
        for (QByteArray const &line : each.readAllStandardOutput().split('\n')) {
            QList<QByteArray> const words = line.split(' ');
            if (words.size() == 6)
                (words[0] == "saves" ? saves : saved) = words.mid(1);
        }
        for (int i = 0; i < 5 && !saved.isEmpty(); ++i) {
            int const value = found.value(u"%1.%2"_s.arg(number).arg(i), -1);
            EXPECT_TRUE(
                value == saved[i].toInt() || (each.exitStatus() == QProcess::CrashExit && value == saves[i].toInt()))
                << number << '.' << i << ": " << value << " instead of " << saved[i].constData();
        }
    }
    for (int i = 0; i < 3; ++i) {
        int const value = found.value(u"common.%1"_s.arg(i), -1);
        EXPECT_TRUE(value == -1 || (value / 1000000 <= processes && value % 1000000 <= count)) << value;
    }
    EXPECT_EQ(run("share", shared, { u"9"_s, u"5"_s }).status, 0) << "what the killed ones left is in nobody's way";
    EXPECT_FALSE(QFile::exists(shared + u".xml.lock"_s));
    EXPECT_EQ(newFiles(path(u"case"_s)), QStringList());
}
