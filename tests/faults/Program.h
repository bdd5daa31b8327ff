#ifndef PROGRAM_H
#define PROGRAM_H

#include <QByteArray>
#include <QProcess>
#include <QStringList>

#include <functional>
#include <optional>

/*! How a child process ended. */
struct Outcome {
    std::optional<int> status; /*!< Exit status; none after a signal or when the time was up. */
    QByteArray output;
    QByteArray errors;
    qint64 milliseconds = 0;
};

/*! Limits of a child process. */
struct Limits {
    std::optional<quint64> memory; /*!< Address space in bytes; the sanitizers need more than any limit leaves. */
    std::optional<quint64> fileSize; /*!< Longest file in bytes; a write beyond it is cut short, then fails. */
    bool killAtFileSize = false; /*!< The first write beyond the file size kills instead. */
    int milliseconds = 60000;
};

namespace Program {
/*! A child process that is set up to start; null standard input, no leak check, which no tracer allows. */
void prepare(QProcess &process, QString const &program, QStringList const &arguments, Limits const &limits = {});
Outcome run(QString const &program, QStringList const &arguments, Limits const &limits = {});
/*! Calls a function for each index below a count, two at a time. */
void forEach(std::size_t count, std::function<void(std::size_t)> const &function);
} // namespace Program

#endif
