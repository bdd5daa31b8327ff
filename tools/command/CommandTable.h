#ifndef COMMANDTABLE_H
#define COMMANDTABLE_H

#include "Command.h"

#include <vector>

/*! An option. As the row of a verb does, its row gives the help, the man page and the completions all that they say. */
struct Option {
    char const *names; /*!< The long name, then short ones. */
    char const *value; /*!< A kind of value; empty for a switch. */
    char const *help;
    bool isAnswer = false; /*!< It is answered instead of a verb being run. */
    bool isRepeated = false;
};

/*! What may be typed where a verb or an option shows the name of the kind. */
struct ValueKind {
    enum Source {
        Text,
        OneOf, /*!< Nothing but the choices. */
        Suggested, /*!< The choices, and perhaps others. */
        Key,
        ValueOfKey, /*!< A value of the key before it. */
        File,
        Folder
    };
    char const *name;
    Source source;
    QStringList choices = {};
};

struct StatusText {
    ExitStatus status;
    char const *text;
};

struct Example {
    char const *command;
    char const *text;
};

/*! All that the program understands, said once. */
namespace CommandTable {
std::vector<Verb> const &verbs();
std::vector<Option> const &options();
std::vector<ValueKind> const &kinds();
std::vector<StatusText> const &statusTexts();
std::vector<Example> const &examples();
/*! What there is to know beside the rows. */
std::vector<char const *> const &notes();

QStringList words(char const *text);
/*! For a verb that was given too few arguments, or too many. */
Failure wrongArguments(Verb const &verb);
/*! The long name of an option. */
QString name(Option const &option);
/*! Null when there is no such verb. */
Verb const *findVerb(QString const &name);
/*! The kind of an argument or of an option's value; "..." behind its name is no part of it. */
ValueKind const &kind(QString name);
/*! The verbs that take an option; none take one that belongs to no verb in particular. */
QStringList verbsOf(Option const &option);
/*! The options of a verb; without one, those that belong to no verb in particular. */
std::vector<Option> optionsOf(Verb const *verb);
std::vector<Option> optionsOfSomeVerbs();
} // namespace CommandTable

#endif
