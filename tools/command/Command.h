#ifndef COMMAND_H
#define COMMAND_H

#include <QString>
#include <QStringList>

class QCommandLineParser;
class QTextStream;

/*! How the program ends. Scripts rely on the numbers. */
enum class ExitStatus : int {
    Done = 0,
    NoSuchKey = 1,
    WrongUsage = 2,
    CannotRead = 3,
    CannotWrite = 4,
    Locked = 5,
    NotAValue = 6
};

/*! Thrown to end the program. */
struct Failure {
    ExitStatus status;
    QString text; /*!< For the error stream; may have several lines. */
};

/*! What the user asked a verb to do. */
struct Call {
    QStringList arguments; /*!< As many as the verb takes. */
    QCommandLineParser const &options;
    QTextStream &out; /*!< Standard output: data alone. */
};

/*! One thing that the program can do. The texts are ASCII; lists of words are separated by blanks. */
struct Verb {
    char const *name;
    char const *arguments; /*!< Words of the kinds of value; "..." behind the last one: one or more of it. */
    char const *options; /*!< Options specific to this verb. */
    void (*run)(Call const &call);
    char const *help;
    char const *details = ""; /*!< More sentences, for the manual. */
};

/*! The verbs, each in the room of what it is about. */
namespace Verbs {
void list(Call const &call);
void get(Call const &call);
void describe(Call const &call);
void set(Call const &call);
void reset(Call const &call);
void diff(Call const &call);
void dump(Call const &call);
void load(Call const &call);
void check(Call const &call);
void writeOverride(Call const &call);
void explain(Call const &call);
void keys(Call const &call);
void checkSources(Call const &call);
void cached(Call const &call);
void scenes(Call const &call);
void texts(Call const &call);
} // namespace Verbs

#endif
