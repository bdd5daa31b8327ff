#ifndef PROGRAMTEST_H
#define PROGRAMTEST_H

#include "TestSupport.h"

#include <QProcess>

/*! One run of the program. "|" separates the arguments, "$" is the temporary folder. */
struct Command {
    char const *arguments;
    int status;
    QByteArray out;
    char const *messages = ""; /*!< Part of the error stream; an empty text stands for an empty stream. */
    QByteArray in = {};
};

/*! A test that runs the program, with an installation and a user of its own. */
class ProgramTest : public HostTest {
protected:
    ProgramTest();

    void expect(std::vector<Command> const &commands);
    /*! Runs any program and gives its standard output; anything on its error stream fails the test. */
    QByteArray run(QString const &program, QStringList const &arguments, QByteArray const &in = {});
    /*! The standard output of one run of the program with one argument. */
    QByteArray output(QString const &verb);
    void userFile(QByteArray const &items) const;

    QStringList commonArguments{ QStringLiteral("--install"), path(QStringLiteral("install")), QStringLiteral("--user"),
        path(QStringLiteral("user.pref")) };

private:
    void start(QString const &program, QStringList const &arguments, QByteArray const &in);

    QProcess m_process;
};

#endif
