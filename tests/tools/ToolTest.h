#ifndef TOOLTEST_H
#define TOOLTEST_H

#include "TestSupport.h"

#include <QProcess>

/*! A test that runs the program. */
class ToolTest : public HostTest {
protected:
    struct Run {
        int status = -1;
        std::string out; /*!< The temporary folder shown as "$". */
        std::string messages;
    };

    /*! One run with the installation and the user's store of the test. */
    Run run(QStringList const &arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C")); // messages in English
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(PREFS_PROGRAM),
            QStringList{ QStringLiteral("--install"), path(QStringLiteral("install")), QStringLiteral("--user"),
                path(QStringLiteral("user.pref")) }
                + arguments);
        EXPECT_TRUE(process.waitForFinished(120000)) << process.errorString();
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        auto const text = [this](QByteArray bytes) { return bytes.replace(path({}).toUtf8(), "$").toStdString(); };
        return { process.exitCode(), text(process.readAllStandardOutput()), text(process.readAllStandardError()) };
    }
};

#endif
