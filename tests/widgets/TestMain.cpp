#include <QApplication>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace {
// A display of the test's own: real windows, keyboard focus and all, whether or not the machine has a screen.
bool startDisplay(QProcess &server)
{
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
#ifdef Q_OS_LINUX
    server.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); }); // also when a test crashes
#endif
    // The server finds a free number and writes it when it is ready.
    QStringList arguments;
    for (char const *const argument : { "-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp" })
        arguments.append(QString::fromLatin1(argument));
    server.start(QStringLiteral("Xvfb"), arguments);
    while (!server.canReadLine()) {
        if (!server.waitForReadyRead())
            return false;
    }
    qputenv("DISPLAY", ":" + server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
    // The session of whoever runs the test has no part in it.
    for (char const *const bus : { "DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS" })
        qputenv(bus, "disabled:");
    return true;
}
} // namespace

int main(int argc, char **argv)
{
    QProcess server;
    if (!startDisplay(server)) {
        std::fprintf(stderr, "Xvfb does not start: %s\n", qUtf8Printable(server.errorString()));
        return EXIT_FAILURE;
    }
    int result = EXIT_FAILURE;
    {
        QApplication application(argc, argv);
        testing::InitGoogleTest(&argc, argv);
        result = RUN_ALL_TESTS();
    }
    server.terminate();
    server.waitForFinished();
    return result;
}
