// A preference dialog, made from what the store says of its items. The host behind it is examples/host.
//
//     example_dialog [--user FILE] [--install FOLDER] [--category NAME] [--screenshot FILE]

#include "KeyFrameItem.h"
#include "PreferenceDialog.h"

#include <HostPlatform.h>
#include <MSG_Scope.h>
#include <PR_Preference.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QFontDatabase>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {
// A few changes for the picture, in a store that is never saved.
void changeSomeValues(PR_Preference &store)
{
    store.setIntValue(u"TIMELINE_TRACK_HEIGHT"_s, 32);
    store.setRgbaValue(u"TIMELINE_MARK_KEY_DRAWING_COLOR"_s, 0xB04060E0);
}

bool takePicture(PreferenceDialog &dialog, QString const &path)
{
    dialog.resize(860, 520);
    dialog.show();
    QTimer::singleShot(500, &dialog, &QCoreApplication::quit); // the clear buttons of text fields fade in
    QApplication::exec();
    return dialog.grab().save(path);
}
} // namespace

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
        { u"category"_s, u"The category to begin with."_s, u"NAME"_s, u"Timeline"_s },
        { u"screenshot"_s, u"Writes a picture of the dialog with some changes to FILE, and ends."_s, u"FILE"_s },
    });
    options.process(application);

    HostPlatform &host = HostPlatform::current();
    host.installFolder = options.value(u"install"_s);
    // A font that is not on this machine is replaced by that of the program.
    host.defaultFontId =
        unsigned(qMax(0, int(QFontDatabase::families().indexOf(QFontInfo(QApplication::font()).family()))));
    host.report = [](HostReport const &report) {
        if (report.action != MSG_Scope::Log)
            std::fprintf(stderr, "%s\n", qUtf8Printable(report.text));
    };

    // The example's own type of preference must be known before the definitions are read.
    KeyFrameItem::registerType();
    bool const isPicture = options.isSet(u"screenshot"_s);
    QTemporaryDir const empty;
    QString const name = isPicture ? empty.filePath(u"user.pref"_s) : options.value(u"user"_s);
    std::unique_ptr<PR_Preference> const store(PR_Preference::createPreference(name));
    if (store->getErrorCode() != PR_Preference::NoError) {
        std::fprintf(stderr, "No preferences: %s\n", qUtf8Printable(store->getErrorMessage().getText()));
        return EXIT_FAILURE;
    }
    tuPref = store.get();
    store->setShared(true); // an artist works with several windows of the program open

    if (isPicture)
        changeSomeValues(*store);
    PreferenceDialog dialog(*store);
    dialog.showCategory(PR_PrefItem::getCategory(options.value(u"category"_s)));
    int status = EXIT_SUCCESS;
    if (isPicture) {
        status = takePicture(dialog, options.value(u"screenshot"_s)) ? EXIT_SUCCESS : EXIT_FAILURE;
    } else {
        dialog.show(); // beside the views of a host, so not modal; it saves when it closes
        status = QApplication::exec();
    }
    tuPref = nullptr;
    return status;
}
