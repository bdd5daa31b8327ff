#ifndef COMMANDLINE_H
#define COMMANDLINE_H

#include <QCommandLineParser>

struct Verb;

/*! What was typed, taken apart and checked against the table. */
class CommandLine {
public:
    /*! Throws a Failure when it is no right usage. */
    explicit CommandLine(QStringList const &typed);

    QCommandLineParser const &options() const { return m_parser; }
    /*! Null when an option is to be answered and no verb was typed. */
    Verb const *verb() const { return m_verb; }
    /*! As many as the verb takes, unless an option is to be answered. */
    QStringList const &arguments() const { return m_arguments; }

private:
    void checkOptions() const;
    bool isAnswered() const;
    void checkArguments() const;

    QCommandLineParser m_parser;
    Verb const *m_verb = nullptr;
    QStringList m_arguments;
};

#endif
