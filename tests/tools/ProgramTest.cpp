#include "ProgramTest.h"

#include <QProcess>

using namespace Qt::StringLiterals;

ProgramTest::ProgramTest()
{
    define(category("<bool id='BOOL' value='true'/>"
                    "<int id='INT' value='3' min='-9' max='9' shortDesc='Cells' longDesc='Cells held.'/>"
                    "<double id='DOUBLE' value='0.5' percentage='true'/>"
                    "<color id='COLOR' red='1' green='2' blue='3'/>"
                    "<string id='STRING' value='text'/>"
                    "<shortcut id='KEY' value='Ctrl+S'/>"
                    "<int id='LOCKED' value='1' facilityOverride='true'/>")
        + category("<font id='FONT' value=''/><font id='OTHER_FONT' value=''/>", "Timeline"));
    writeFile(u"file"_s, "not a folder");
}

void ProgramTest::expect(std::vector<Command> const &commands) const
{
    for (Command const &command : commands) {
        SCOPED_TRACE(command.arguments);
        QString const arguments = QString::fromUtf8(command.arguments).replace(u'$', path(QString()));
        Run const result = run(arguments.split(u'|', Qt::SkipEmptyParts), command.in);
        EXPECT_EQ(result.status, command.status);
        EXPECT_EQ(result.out, command.out.toStdString());
        if (*command.messages)
            EXPECT_NE(result.messages.find(command.messages), std::string::npos) << result.messages;
        else
            EXPECT_EQ(result.messages, "");
    }
}

ProgramTest::Run ProgramTest::run(QStringList const &arguments, QByteArray const &in) const
{
    return start(QStringLiteral(PREFS_PROGRAM), commonArguments + arguments, in);
}

QByteArray ProgramTest::output(QString const &program, QStringList const &arguments) const
{
    Run const result = start(program, arguments, {});
    EXPECT_EQ(result.messages, "");
    return QByteArray::fromStdString(result.out);
}

void ProgramTest::userFile(QByteArray const &items) const
{
    writeFile(u"user-pref.xml"_s, "<preferences>\n" + items + "</preferences>");
}

ProgramTest::Run ProgramTest::start(QString const &program, QStringList const &arguments, QByteArray const &in) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"QT_QPA_PLATFORM"_s);
    environment.insert(u"LC_ALL"_s, u"C"_s); // messages in English
    environment.insert(u"XDG_CONFIG_HOME"_s, path(u"config"_s));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.write(in);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(120000)) << process.errorString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    auto const text = [this](QByteArray bytes) { return bytes.replace(path({}).toUtf8(), "$").toStdString(); };
    return { process.exitCode(), text(process.readAllStandardOutput()), text(process.readAllStandardError()) };
}
