#include "CacheVerbs.h"
#include "DefinitionVerbs.h"
#include "StoreVerbs.h"
#include "Verb.h"

#include "HostPlatform.h"
#include "MSG_Scope.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>

#include <cstdio>
#include <map>

using namespace Qt::StringLiterals;

namespace {
Verb const verbs[] = {
    { "list", "", "category changed", StoreVerbs::list, "Key, type and value of each preference, separated by tabs." },
    { "get", "KEY", "", StoreVerbs::get, "The value." },
    { "describe", "KEY", "", StoreVerbs::describe, "All that is known of a preference." },
    { "set", "KEY VALUE", "", StoreVerbs::set, "Sets the value and saves." },
    { "reset", "KEY", "", StoreVerbs::reset, "Goes back to the default and saves." },
    { "check", "[FILE...]", "strict ignore rules json", DefinitionVerbs::check,
        "What is wrong in definitions, overrides, sets and users' files." },
    { "explain", "KEY...", "json", DefinitionVerbs::explain, "Where the value comes from, layer by layer." },
    { "cached", "", "", CacheVerbs::cached, "Accessor, key, type and value of each cached value." },
    { "scenes", "", "", CacheVerbs::scenes, "Recent scenes: key, last use, cache, and whether it goes next." },
};

struct StatusText {
    ExitStatus status;
    char const *text;
};
StatusText const statusTexts[] = {
    { ExitStatus::Done, "done" },
    { ExitStatus::NoSuchKey, "no such key, or none with a default to reset" },
    { ExitStatus::WrongUsage, "wrong usage" },
    { ExitStatus::CannotRead, "a file that cannot be read, or with errors that check found" },
    { ExitStatus::CannotWrite, "a file that cannot be written" },
    { ExitStatus::Locked, "the preference is locked by the facility" },
    { ExitStatus::NotAValue, "not a value of the preference's type" },
};

// The error stream: what the library reports, and what the program itself has to say.
class Messages {
public:
    explicit Messages(QCommandLineParser const &options)
    {
        HostPlatform::current().report = [this, &options](HostReport const &report) {
            if (options.isSet(u"verbose"_s) || report.action != MSG_Scope::Log)
                print(report.text);
            else
                m_heldBack.append(report.text);
        };
    }
    ~Messages() { HostPlatform::current().report = nullptr; }
    Q_DISABLE_COPY_MOVE(Messages)

    static void print(QString const &text) { std::fprintf(stderr, "prefs: %s\n", qUtf8Printable(text)); }

    void print(Failure const &failure)
    {
        // What was only worth a log may be the reason of the failure.
        if (failure.status == ExitStatus::CannotRead) {
            for (QString const &text : std::as_const(m_heldBack))
                print(text);
        }
        print(failure.text);
        if (failure.status == ExitStatus::WrongUsage)
            print(u"\"prefs --help\" tells the usage."_s);
    }

private:
    QStringList m_heldBack;
};

QStringList words(char const *text)
{
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

void addOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        { u"category"_s, u"list: only the preferences of a category, such as \"Drawing Mode\"."_s, u"TEXT"_s },
        { u"changed"_s, u"list: only the preferences that the user changed."_s },
        { u"strict"_s, u"check: a warning counts as an error."_s },
        { u"ignore"_s, u"check: leaves out the findings of a rule; may be repeated."_s, u"RULE"_s },
        { u"rules"_s, u"check: list the rules, with their weight in definitions and in users' files."_s },
        { u"json"_s, u"check, explain: write JSON."_s },
        { u"install"_s, u"Folder that holds \"resources\"; by default that of this installation."_s, u"DIR"_s },
        { u"user"_s,
            u"The user's store: FILE is the old text file; \"F.pref\" is kept in \"F-pref.xml\", any other name "
            "gets \".xml\" added. By default the application's own."_s,
            u"FILE"_s },
        { u"local"_s, u"The store of the settings of this machine."_s },
        { u"flavour"_s, u"norvelle (default) or panovia."_s, u"NAME"_s },
        { u"mode"_s, u"paint, scan or full (default)."_s, u"NAME"_s },
        { u"feature"_s, u"A feature keyword that holds; may be repeated."_s, u"WORD"_s },
        { u"morphing"_s, u"The product has morphing."_s },
        { u"verbose"_s, u"Also show messages that are only worth a log."_s },
        { { u"h"_s, u"help"_s }, u"Show this text."_s },
        { u"version"_s, u"Show the version."_s },
    });
}

int choice(QCommandLineParser const &options, QString const &name, std::map<QString, int> const &choices)
{
    if (!options.isSet(name))
        return 0;
    auto const found = choices.find(options.value(name));
    if (found != choices.end())
        return found->second;
    QStringList names;
    for (auto const &entry : choices)
        names.append(entry.first);
    throw Failure{ ExitStatus::WrongUsage, u"--%1 takes one of: %2."_s.arg(name, names.join(u' ')) };
}

void configureHost(QCommandLineParser const &options)
{
    HostPlatform &host = HostPlatform::current();
    host.installFolder = options.value(u"install"_s);
    host.appIsPanovia = choice(options, u"flavour"_s, { { u"norvelle"_s, 0 }, { u"panovia"_s, 1 } }) == 1;
    host.hasPanoviaPreferenceUI = host.appIsPanovia;
    host.mode = choice(options, u"mode"_s, { { u"full"_s, 0 }, { u"paint"_s, 2 }, { u"scan"_s, 3 } });
    host.featureKeywords = options.values(u"feature"_s);
    host.hasMorphing = options.isSet(u"morphing"_s);
}

// A negative number is a value, not an option, and so is what follows it.
QStringList withNumbersAsValues(QStringList arguments)
{
    for (qsizetype i = 0; i < arguments.size() && arguments[i] != "--"_L1; ++i) {
        QString const &argument = arguments[i];
        if (argument.size() > 1 && argument[0] == u'-' && (argument[1].isDigit() || argument[1] == u'.')) {
            arguments.insert(i, u"--"_s);
            break;
        }
    }
    return arguments;
}

void printHelp(QCommandLineParser const &parser, QTextStream &out)
{
    out << parser.helpText() << "\nVerbs:\n";
    for (Verb const &verb : verbs)
        out << "  " << qSetFieldWidth(17) << Qt::left << (words(verb.name) + words(verb.arguments)).join(u' ')
            << qSetFieldWidth(0) << verb.help << '\n';
    out << "\nlist, describe, cached and scenes write \\t, \\n and \\\\ for a tab, a line feed and a backslash.\n"
           "A VALUE that begins with '-' and is no number comes after \"--\".\n\n"
           "check takes a file below a folder \"preferenceSets\" for a preference set, one with \"override\" in its "
           "name\n"
           "for an override, one with categories for definitions, and any other for a user's file.\n\nExit status:\n";
    for (StatusText const &entry : statusTexts)
        out << "  " << int(entry.status) << "  " << entry.text << '\n';
}

Verb const &findVerb(QCommandLineParser const &options, QString const &name)
{
    for (Verb const &verb : verbs) {
        if (name != QLatin1String(verb.name))
            continue;
        for (Verb const &other : verbs) {
            for (QString const &option : words(other.options)) {
                if (options.isSet(option) && !words(verb.options).contains(option))
                    throw Failure{ ExitStatus::WrongUsage, u"%1 takes no --%2."_s.arg(name, option) };
            }
        }
        return verb;
    }
    throw Failure{ ExitStatus::WrongUsage, u"There is no verb \"%1\"."_s.arg(name) };
}

// "ARGUMENT..." stands for one or more, "[ARGUMENT...]" for any number.
bool takes(Verb const &verb, qsizetype count)
{
    QStringList const expected = words(verb.arguments);
    QString const last = expected.isEmpty() ? QString() : expected.last();
    if (!last.contains("..."_L1))
        return count == expected.size();
    return count >= expected.size() - (last.startsWith(u'[') ? 1 : 0);
}

void run(QCommandLineParser &parser, QStringList const &commandLine, QTextStream &out)
{
    if (!parser.parse(withNumbersAsValues(commandLine)))
        throw Failure{ ExitStatus::WrongUsage, parser.errorText() };
    if (parser.isSet(u"help"_s))
        return printHelp(parser, out);
    if (parser.isSet(u"version"_s)) {
        out << "prefs " PREFS_VERSION "\n";
        return;
    }

    QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty())
        throw Failure{ ExitStatus::WrongUsage, u"A verb is missing."_s };
    Verb const &verb = findVerb(parser, arguments.takeFirst());
    if (!takes(verb, arguments.size())) {
        QString const expected = *verb.arguments ? QString::fromLatin1(verb.arguments) : u"no arguments"_s;
        throw Failure{ ExitStatus::WrongUsage, u"%1 takes %2."_s.arg(QLatin1String(verb.name), expected) };
    }
    configureHost(parser);
    verb.run({ arguments, parser, out });
}
} // namespace

int main(int argc, char **argv)
{
    // While it starts, Qt warns of what a session without a display lacks.
    QtMessageHandler const usual =
        qInstallMessageHandler([](QtMsgType type, QMessageLogContext const &, QString const &text) {
            if (type == QtCriticalMsg || type == QtFatalMsg)
                Messages::print(text);
        });
    QStringList commandLine;
    for (int i = 0; i < argc; ++i)
        commandLine.append(QString::fromLocal8Bit(argv[i]));
    // Fonts need an application for a user interface, which runs without a display then. It is not shown the
    // arguments: it would take those that it knows for itself.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    int own = 1;
    QGuiApplication const application(own, argv);
    qInstallMessageHandler(usual);

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Reads and writes the preferences of a user."_s);
    parser.addPositionalArgument(u"verb"_s, u"What to do; see below."_s, u"VERB"_s);
    parser.addPositionalArgument(u"arguments"_s, u"What the verb takes."_s, u"[ARGUMENT...]"_s);
    addOptions(parser);

    Messages messages(parser);
    try {
        QTextStream out(stdout);
        run(parser, commandLine, out);
        out.flush();
        if (out.status() != QTextStream::Ok || std::fflush(stdout) != 0)
            throw Failure{ ExitStatus::CannotWrite, u"Standard output cannot be written."_s };
    } catch (Failure const &failure) {
        messages.print(failure);
        return int(failure.status);
    }
    return int(ExitStatus::Done);
}
