#ifndef PROGRAMTEST_H
#define PROGRAMTEST_H

#include "TestSupport.h"

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
    /*! What a run gave, the temporary folder shown as "$". */
    struct Run {
        int status;
        std::string out;
        std::string messages;
    };

    ProgramTest();

    void expect(std::vector<Command> const &commands) const;
    Run run(QStringList const &arguments, QByteArray const &in = {}) const;
    /*! Runs any program and gives its standard output; anything on its error stream fails the test. */
    QByteArray output(QString const &program, QStringList const &arguments) const;
    /*! The items begin in the second line. */
    void userFile(QByteArray const &items) const;

    QStringList commonArguments{ QStringLiteral("--install"), path(QStringLiteral("install")), QStringLiteral("--user"),
        path(QStringLiteral("user.pref")) };

private:
    Run start(QString const &program, QStringList const &arguments, QByteArray const &in) const;
};

#endif
