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
    /*! Calls a function for each index below a count, two at a time; for one in \a stride of them unless all faults are
        asked for. */
    static void forSome(std::size_t count, std::size_t stride, std::function<void(std::size_t)> const &function)
    {
        if (qEnvironmentVariableIsSet("BRIVANT_ALL_FAULTS"))
            stride = 1;
        Program::forEach((count + stride - 1) / stride, [&](std::size_t i) { function(i * stride); });
    }
    /*! The new files beside a store, which no finished process leaves. */
    static QStringList newFiles(QString const &folder)
    {
        return QDir(folder).entryList({ QStringLiteral("*.new-*") }, QDir::AllEntries | QDir::Hidden | QDir::System);
    }

    QString const program = QStringLiteral(FAULT_HOST);
};

#endif
