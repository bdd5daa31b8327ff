#include "Application.h"
#include "Command.h"
#include "CommandLine.h"
#include "Completion.h"
#include "Usage.h"

#include "HostPlatform.h"
#include "MSG_Scope.h"

#include <QLoggingCategory>
#include <QTextStream>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#endif

using namespace Qt::StringLiterals;

namespace {
// The error stream: what the library reports, and what the program itself has to say.
class Messages {
public:
    Messages()
    {
        s_current = this;
        HostPlatform::current().report = [this](HostReport const &report) {
            report.action == MSG_Scope::Log ? log(report.text) : print(report.text);
        };
        QLoggingCategory::setFilterRules(u"brivant.preference.info=true"_s);
        // Of Qt's warnings most are about what a session without a display lacks.
        qInstallMessageHandler([](QtMsgType type, QMessageLogContext const &context, QString const &text) {
            if (type == QtCriticalMsg || type == QtFatalMsg)
                print(text);
            else if (qstrcmp(context.category, "brivant.preference") == 0)
                s_current->log(text);
        });
    }
    ~Messages()
    {
        HostPlatform::current().report = nullptr;
        qInstallMessageHandler(nullptr);
    }
    Q_DISABLE_COPY_MOVE(Messages)

    void setVerbose(bool isVerbose) { m_isVerbose = isVerbose; }

    static void print(QString const &text) { std::fprintf(stderr, "prefs: %s\n", qUtf8Printable(text)); }

    void print(Failure const &failure)
    {
        // What was only worth a log may be the reason of the failure.
        if (failure.status == ExitStatus::CannotRead) {
            for (QString const &text : std::as_const(m_heldBack))
                print(text);
        }
        for (QString const &line : failure.text.split(u'\n'))
            print(line);
        if (failure.status == ExitStatus::WrongUsage)
            print(u"\"prefs --help\" tells the usage."_s);
    }

private:
    void log(QString const &text)
    {
        if (m_isVerbose)
            print(text);
        else
            m_heldBack.append(text);
    }

    static inline Messages *s_current = nullptr;

    bool m_isVerbose = false;
    QStringList m_heldBack;
};

void configureHost(QCommandLineParser const &options)
{
    HostPlatform &host = HostPlatform::current();
    QString const mode = options.value(u"mode"_s);
    host.installFolder = options.value(u"install"_s);
    host.appIsPanovia = options.value(u"flavour"_s) == "panovia"_L1;
    host.hasPanoviaPreferenceUI = host.appIsPanovia;
    host.mode = mode == "paint"_L1 ? 2 : mode == "scan"_L1 ? 3 : 0;
    host.featureKeywords = options.values(u"feature"_s);
    host.hasMorphing = options.isSet(u"morphing"_s);
    host.readOnly = true; // until a verb loads a store to write to it
}

// What an option asks for instead of a verb; empty when none does.
QString answer(CommandLine const &commandLine)
{
    QCommandLineParser const &options = commandLine.options();
    if (options.isSet(u"help"_s))
        return Usage::help(commandLine.verb());
    if (options.isSet(u"version"_s))
        return u"prefs " PREFS_VERSION "\n"_s;
    QString const format = options.value(u"generate"_s);
    return format == "man"_L1 ? Usage::manPage()
        : format == "bash"_L1 ? Completion::bash()
        : format == "zsh"_L1  ? Completion::zsh()
                              : QString();
}

// A standard stream that is closed would become the first file that is opened. Reading finds nothing in its place, and
// writing fails as before.
void occupyClosedStreams()
{
#ifdef Q_OS_UNIX
    for (int stream : { 0, 1, 2 }) {
        if (::fcntl(stream, F_GETFD) < 0)
            (void)::open("/dev/null", O_RDONLY); // takes the lowest number that is free
    }
#endif
}
} // namespace

int main(int argc, char **argv)
{
    occupyClosedStreams();
    QStringList typed;
    for (int i = 0; i < argc; ++i)
        typed.append(QString::fromLocal8Bit(argv[i]));

    Messages messages;
    try {
        CommandLine const commandLine(typed);
        messages.setVerbose(commandLine.options().isSet(u"verbose"_s));
        QTextStream out(stdout);
        QString const text = answer(commandLine);
        if (text.isEmpty()) {
            configureHost(commandLine.options());
            Application const application(argv);
            commandLine.verb()->run({ commandLine.arguments(), commandLine.options(), out });
        }
        out << text;
        out.flush();
        if (out.status() != QTextStream::Ok || std::fflush(stdout) != 0)
            throw Failure{ ExitStatus::CannotWrite, u"Standard output cannot be written."_s };
    } catch (Failure const &failure) {
        messages.print(failure);
        return int(failure.status);
    }
    return int(ExitStatus::Done);
}
