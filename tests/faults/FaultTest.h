#ifndef FAULTTEST_H
#define FAULTTEST_H

#include "Program.h"
#include "TestSupport.h"
#include "ValueSet.h"

#include <QDir>

/*! A test that runs a host of a store in child processes. */
class FaultTest : public HostTest {
protected:
    FaultTest() { writeFile(QStringLiteral("install/resources/prefs.xml"), ValueSet::definitions()); }

    /*! The arguments for the host, by default with the good definitions. */
    QStringList arguments(char const *verb, QString const &store, QStringList const &more = {},
        QString const &install = QStringLiteral("install")) const
    {
        return QStringList{ path(install), QString::fromLatin1(verb), store } + more;
    }
    /*! Runs the host on a store. */
    Outcome run(char const *verb, QString const &store, QStringList const &more = {}, Limits const &limits = {}) const
    {
        return Program::run(program, arguments(verb, store, more), limits);
    }
    /*! The new files beside a store, which no finished process leaves. */
    static QStringList newFiles(QString const &folder)
    {
        return QDir(folder).entryList({ QStringLiteral("*.new") }, QDir::AllEntries | QDir::Hidden | QDir::System);
    }

    QString const program = QStringLiteral(FAULT_HOST);
};

#endif
