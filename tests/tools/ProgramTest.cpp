#include "ProgramTest.h"

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
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"QT_QPA_PLATFORM"_s);
    environment.insert(u"LC_ALL"_s, u"C"_s); // messages in English
    environment.insert(u"XDG_CONFIG_HOME"_s, path(u"config"_s));
    m_process.setProcessEnvironment(environment);
}

void ProgramTest::start(QString const &program, QStringList const &arguments, QByteArray const &in)
{
    m_process.start(program, arguments);
    m_process.write(in);
    m_process.closeWriteChannel();
    ASSERT_TRUE(m_process.waitForFinished()) << m_process.errorString();
    ASSERT_EQ(m_process.exitStatus(), QProcess::NormalExit);
}

void ProgramTest::expect(std::vector<Command> const &commands)
{
    for (Command const &command : commands) {
        SCOPED_TRACE(command.arguments);
        QString const arguments = QString::fromUtf8(command.arguments).replace(u'$', path(QString()));
        start(QStringLiteral(PREFS_PROGRAM), commonArguments + arguments.split(u'|', Qt::SkipEmptyParts), command.in);
        EXPECT_EQ(m_process.exitCode(), command.status);
        EXPECT_EQ(m_process.readAllStandardOutput().toStdString(), command.out.toStdString());
        std::string const messages = m_process.readAllStandardError().toStdString();
        if (*command.messages)
            EXPECT_NE(messages.find(command.messages), std::string::npos) << messages;
        else
            EXPECT_EQ(messages, "");
    }
}

QByteArray ProgramTest::run(QString const &program, QStringList const &arguments, QByteArray const &in)
{
    start(program, arguments, in);
    EXPECT_EQ(m_process.readAllStandardError().toStdString(), "");
    return m_process.readAllStandardOutput();
}

QByteArray ProgramTest::output(QString const &verb)
{
    start(QStringLiteral(PREFS_PROGRAM), commonArguments + QStringList{ verb }, {});
    m_process.readAllStandardError();
    return m_process.readAllStandardOutput();
}

void ProgramTest::userFile(QByteArray const &items) const
{
    writeFile(u"user-pref.xml"_s, "<preferences>" + items + "</preferences>");
}
