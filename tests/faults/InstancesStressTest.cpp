#include "FaultTest.h"

#include <QDir>
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
