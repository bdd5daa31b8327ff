#include "Usage.h"

#include "CommandTable.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {
auto const description = "Reads and writes the preferences of a user."_L1;

QString synopsis(Verb const &verb)
{
    return (QStringList{ QLatin1String(verb.name) } + CommandTable::words(verb.arguments)).join(u' ');
}

// "--help, -h" or "--user FILE".
QString synopsis(Option const &option)
{
    QStringList names = CommandTable::words(option.names);
    for (QString &name : names)
        name.prepend(name.size() == 1 ? "-"_L1 : "--"_L1);
    QString const value = QLatin1String(option.value);
    return names.join(", "_L1) + (value.isEmpty() ? value : u' ' + value);
}

QString helpText(Option const &option)
{
    QString text = QLatin1String(option.help);
    ValueKind const *const kind = *option.value ? &CommandTable::kind(QLatin1String(option.value)) : nullptr;
    if (kind && kind->source == ValueKind::OneOf)
        text += " One of: "_L1 + kind->choices.join(", "_L1) + u'.';
    return text;
}

// Lines of a text for a terminal.
QString wrapped(QString const &text, qsizetype indent)
{
    qsizetype const width = 80;
    QString const newLine = u'\n' + QString(indent, u' ');
    QString lines;
    qsizetype column = indent;
    for (QString const &word : text.split(u' ')) {
        if (column > indent && column + 1 + word.size() > width) {
            lines += newLine;
            column = indent;
        } else if (column > indent) {
            lines += u' ';
            ++column;
        }
        lines += word;
        column += word.size();
    }
    return lines + u'\n';
}

QString row(QString const &name, QString const &text)
{
    qsizetype const indent = 23;
    QString begin = "  "_L1 + name;
    begin = begin.size() + 2 > indent ? begin + u'\n' + QString(indent, u' ') : begin.leftJustified(indent);
    return begin + wrapped(text, indent);
}

QString rows(QString const &title, std::vector<Option> const &options, bool withVerbs)
{
    QString text = options.empty() ? QString() : u"\n%1:\n"_s.arg(title);
    for (Option const &option : options) {
        QString const verbs = withVerbs ? CommandTable::verbsOf(option).join(", "_L1) + ": "_L1 : QString();
        text += row(synopsis(option), verbs + helpText(option));
    }
    return text;
}

QString helpOfVerb(Verb const &verb)
{
    QString usage = u"Usage: prefs [OPTION...] %1"_s.arg(synopsis(verb));
    for (Option const &option : CommandTable::optionsOf(&verb))
        usage += u" [%1]"_s.arg(synopsis(option));
    QString text = usage + "\n\n"_L1 + wrapped(QLatin1String(verb.help), 0);
    if (*verb.details)
        text += u'\n' + wrapped(QLatin1String(verb.details), 0);
    return text + rows(u"Options of %1"_s.arg(QLatin1String(verb.name)), CommandTable::optionsOf(&verb), false)
        + rows(u"Options"_s, CommandTable::optionsOf(nullptr), false);
}

QString helpOfProgram()
{
    QString text = "Usage: prefs [OPTION...] VERB [ARGUMENT...]\n\n"_L1 + wrapped(description, 0) + "\nVerbs:\n"_L1;
    for (Verb const &verb : CommandTable::verbs())
        text += row(synopsis(verb), QLatin1String(verb.help));
    text += rows(u"Options of some verbs"_s, CommandTable::optionsOfSomeVerbs(), true)
        + rows(u"Options"_s, CommandTable::optionsOf(nullptr), false) + u'\n';
    for (char const *note : CommandTable::notes())
        text += wrapped(QLatin1String(note), 0);
    text += wrapped(u"\"prefs VERB --help\" tells more of a verb."_s, 0) + "\nExit status:\n"_L1;
    for (StatusText const &entry : CommandTable::statusTexts())
        text += u"  %1  %2\n"_s.arg(int(entry.status)).arg(QLatin1String(entry.text));
    return text;
}

// A text as a line of the page.
QString roff(QString text)
{
    text.replace(u'\\', "\\e"_L1).replace(u'-', "\\-"_L1).replace(u'\'', "\\(aq"_L1);
    return text.startsWith(u'.') ? "\\&"_L1 + text : text;
}

QString roff(char const *text)
{
    return roff(QString::fromLatin1(text));
}

// Names in bold, kinds of value in italics: "\fB--user\fR \fIFILE\fR".
QString emphasized(QString const &synopsis)
{
    QStringList words = synopsis.split(u' ');
    for (QString &word : words)
        word = (word[0].isUpper() ? "\\fI"_L1 : "\\fB"_L1) + roff(word) + "\\fR"_L1;
    return words.join(u' ');
}

QString paragraph(QString const &tag, QString const &text)
{
    return ".TP\n"_L1 + tag + u'\n' + text + u'\n';
}
} // namespace

QString Usage::help(Verb const *verb)
{
    return verb ? helpOfVerb(*verb) : helpOfProgram();
}

QString Usage::manPage()
{
    bool isSet = false;
    qint64 const epoch = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isSet);
    QDateTime const date = isSet ? QDateTime::fromSecsSinceEpoch(epoch, Qt::UTC) : QDateTime::currentDateTimeUtc();
    QString page = ".TH PREFS 1 "_L1 + date.toString(u"yyyy-MM-dd"_s) + " \"prefs " PREFS_VERSION "\"\n"_L1
        + ".SH NAME\nprefs \\- reads and writes the preferences of a user\n.SH SYNOPSIS\n"_L1
        + "\\fBprefs\\fR [\\fIOPTION\\fR...] \\fIVERB\\fR [\\fIARGUMENT\\fR...]\n.SH DESCRIPTION\n"_L1
        + "Shows, sets and compares the preferences that the definition files of an installation declare and a user's "
          "file changes. Data goes to standard output, messages go to the error stream.\n"_L1;
    for (char const *note : CommandTable::notes())
        page += ".PP\n"_L1 + roff(note) + u'\n';
    page += ".SH VERBS\n"_L1;
    for (Verb const &verb : CommandTable::verbs()) {
        QString tag = emphasized(synopsis(verb));
        for (Option const &option : CommandTable::optionsOf(&verb))
            tag += u" [%1]"_s.arg(emphasized(synopsis(option)));
        page += paragraph(tag, roff(verb.help) + (*verb.details ? u'\n' + roff(verb.details) : QString()));
    }
    page += ".SH OPTIONS\n"_L1;
    for (std::vector<Option> const &options :
        { CommandTable::optionsOfSomeVerbs(), CommandTable::optionsOf(nullptr) }) {
        for (Option const &option : options) {
            QString const verbs = CommandTable::verbsOf(option).join(", "_L1);
            page += paragraph(emphasized(synopsis(option)),
                roff(helpText(option)) + (verbs.isEmpty() ? QString() : "\nFor "_L1 + verbs + u'.'));
        }
    }
    page += ".SH EXIT STATUS\n"_L1;
    for (StatusText const &entry : CommandTable::statusTexts())
        page += paragraph(QString::number(int(entry.status)), roff(entry.text));
    page += ".SH EXAMPLES\n"_L1;
    for (Example const &example : CommandTable::examples())
        page += paragraph("\\fB"_L1 + roff(example.command) + "\\fR"_L1, roff(example.text));
    return page;
}
