// A host of the preference library, as small as it can be: it tells the library about itself, creates the main store,
// hears of changes, reads values and saves when it ends.
//
//     example_host [FOLDER]
//
// The user's preferences are kept in FOLDER/user-pref.xml, FOLDER being the working folder when it is left out. Each
// run holds drawings for one cell more than the run before.

#include <HostPlatform.h>
#include <MSG_Scope.h>
#include <PL_FileSpec.h>
#include <PR_CachedPreferences.h>
#include <PR_Preference.h>

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {
void print(QString const &text)
{
    std::printf("%s\n", qUtf8Printable(text));
}

// What the library asks of its host: how messages are shown, where files lie, what the product can do. Each has a
// default that works, and is looked at when it is needed, so that a change counts from then on.
void describeHost(QString const &folder)
{
    HostPlatform &host = HostPlatform::current();
    // Translated and filled in. That there is no file yet is only worth a log.
    host.report = [](HostReport const &report) {
        if (report.action != MSG_Scope::Log)
            std::fprintf(stderr, "%s\n", qUtf8Printable(report.text));
    };
    host.specialFolders[PL_FileSpec::LocalPreferenceFolder] = folder;
    host.specialFolders[PL_FileSpec::LocalCacheSettingsFolder] = folder;
    host.specialFolders[PL_FileSpec::DefaultLocalCacheFolder] = QDir::tempPath();
    // Which definitions hold: those for this mode, with these words in their attribute "feature", and for morphing.
    host.mode = HostPlatform::FullMode;
    host.featureKeywords = QStringList{ u"rigging"_s };
    host.hasMorphing = true;
    // The flavour of the product chooses the definition files; the language matters to Panovia alone.
    host.appIsPanovia = host.hasPanoviaPreferenceUI = false;
}

// A view of the host. It keeps no copy of a preference: the cached values cost no more than a variable.
void drawExposureSheet()
{
    print(u"A drawing is followed by a line after %1 cells."_s.arg(PR_CachedPreferences::getXsheetLineHold()));
}

bool save(PR_Preference &store)
{
    store.save();
    PR_Preference::SaveStatus const status = store.saveStatus();
    bool const saved = status.state == PR_Preference::SaveStatus::Saved;
    if (saved)
        print("Saved to "_L1 + store.getPathXml());
    else
        std::fprintf(stderr, "Not saved: %s\n", qUtf8Printable(status.reason)); // the file of before is still whole
    return saved;
}
} // namespace

int main(int argc, char **argv)
{
    // A QCoreApplication does for all but fonts: the choices of font preferences need a QGuiApplication.
    QCoreApplication application(argc, argv);
    QString const folder = application.arguments().value(1, u"."_s);

    describeHost(folder); // before the first store, which reads the definitions

    // Reads the definitions of the installation, then the user's file. The name is that of the text file of old
    // versions, which is read when there is no "user-pref.xml"; only the XML file is ever written.
    std::unique_ptr<PR_Preference> const store(PR_Preference::createPreference(folder + "/user.pref"_L1));
    tuPref = store.get(); // where the other modules of the host find it
    if (store->getErrorCode() != PR_Preference::NoError) {
        std::fprintf(stderr, "No preferences: %s\n", qUtf8Printable(store->getErrorMessage().getText()));
        return EXIT_FAILURE;
    }

    // The notice does not say which value has changed; receivers read what they use, which is cheap. The cached values
    // are new already. The context object ends the connection with the receiver's life.
    drawExposureSheet();
    QObject::connect(store.get(), &PR_Preference::preferenceChanged, &application, drawExposureSheet);

    // The key comes with the cached value, so that it is written down once.
    QString const key = QString::fromLatin1(PR_CachedPreferences::getXsheetLineHoldKey());
    store->setIntValue(key, PR_CachedPreferences::getXsheetLineHold() + 1);
    store->setIntValue(key, store->getIntValue(key, 0)); // the same value: no notice

    // A host with an event loop does this when exec() has returned.
    bool const saved = save(*store);
    tuPref = nullptr;
    return saved ? EXIT_SUCCESS : EXIT_FAILURE;
}
