#ifndef PREFSPROGRAM_H
#define PREFSPROGRAM_H

#include "TestSupport.h"

#include <QProcess>

/*! What the program prefs prints on its standard output. Whole sessions, with what a person types, stand in
    tests/data/sessions. */
inline QString outputOfPrefs(QStringList const &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C")); // messages in English
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PREFS_PROGRAM), arguments);
    EXPECT_TRUE(process.waitForFinished() && process.exitStatus() == QProcess::NormalExit);
    return QString::fromUtf8(process.readAllStandardOutput());
}

#endif
