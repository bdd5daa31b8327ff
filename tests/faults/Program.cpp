#include "Program.h"

#include <QElapsedTimer>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <thread>

#include <sys/resource.h>

namespace {
void setLimit(decltype(RLIMIT_AS) resource, std::optional<quint64> value)
{
    rlimit const limit{ value.value_or(RLIM_INFINITY), RLIM_INFINITY };
    if (value)
        setrlimit(resource, &limit);
}
} // namespace

void Program::prepare(QProcess &process, QString const &program, QStringList const &arguments, Limits const &limits)
{
    process.setProgram(program);
    process.setArguments(arguments);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QString const options = QStringLiteral("ASAN_OPTIONS");
    environment.insert(options, environment.value(options) + QLatin1String(":detect_leaks=0"));
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier([limits] {
#ifndef __SANITIZE_ADDRESS__
        setLimit(RLIMIT_AS, limits.memory);
#endif
        setLimit(RLIMIT_FSIZE, limits.fileSize);
        std::signal(SIGXFSZ, limits.killAtFileSize ? SIG_DFL : SIG_IGN);
        rlimit const noCore{ 0, 0 };
        setrlimit(RLIMIT_CORE, &noCore);
    });
}

Outcome Program::run(QString const &program, QStringList const &arguments, Limits const &limits)
{
    QProcess process;
    prepare(process, program, arguments, limits);
    process.setStandardInputFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start();
    bool const finished = process.waitForFinished(limits.milliseconds);
    Outcome outcome;
    outcome.milliseconds = timer.elapsed();
    if (!finished) {
        process.kill();
        process.waitForFinished();
    } else if (process.exitStatus() == QProcess::NormalExit)
        outcome.status = process.exitCode();
    outcome.output = process.readAllStandardOutput();
    outcome.errors = process.readAllStandardError();
    return outcome;
}

void Program::forEach(std::size_t count, std::function<void(std::size_t)> const &function)
{
    std::atomic<std::size_t> next = 0;
    auto const work = [&] {
        for (std::size_t i = next++; i < count; i = next++)
            function(i);
    };
    std::thread second(work);
    work();
    second.join();
}
