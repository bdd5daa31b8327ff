// The smallest host of the preference dialog. The host behind it is examples/host.
//
//     example_dialog [--user FILE] [--install FOLDER]

#include <HostPlatform.h>
#include <PR_Preference.h>
#include <PR_PreferenceDialog.h>
#include <PR_ReportCollector.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QFontDatabase>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"example_dialog"_s);

    QCommandLineParser options;
    options.addHelpOption();
    options.addOptions({
        { u"user"_s, u"The user's preferences, FILE.xml."_s, u"FILE"_s,
            QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + "/user.pref"_L1 },
        { u"install"_s, u"The folder that holds the \"resources\"."_s, u"FOLDER"_s,
            QCoreApplication::applicationDirPath() + "/install"_L1 },
    });
    options.process(application);

    HostPlatform &host = HostPlatform::current();
    host.installFolder = options.value(u"install"_s);
    // A font that is not on this machine is replaced by that of the program.
    host.defaultFontId =
        unsigned(qMax(0, int(QFontDatabase::families().indexOf(QFontInfo(QApplication::font()).family()))));

    PR_ReportCollector const reports; // so that the dialog can show what the load has to say
    std::unique_ptr<PR_Preference> const store(PR_Preference::createPreference(options.value(u"user"_s)));
    if (store->getErrorCode() != PR_Preference::NoError) {
        std::fprintf(stderr, "No preferences: %s\n", qUtf8Printable(store->getErrorMessage().getText()));
        return EXIT_FAILURE;
    }
    tuPref = store.get();
    store->setShared(true); // an artist works with several windows of the program open

    PR_PreferenceDialog dialog(*store);
    dialog.show(); // beside the views of a host, so not modal
    int const status = QApplication::exec();
    tuPref = nullptr;
    return status;
}
