#include "PR_Conditions_p.h"
#include "PR_Loader_p.h"
#include "PR_Preference_p.h"

#include "HostPlatform.h"
#include "OSW_Lang.h"
#include "oswRemapPath.h"
#include "tufile.h"
#include "whoami.h"

#include <QDomElement>
#include <QPointer>

#include <utility>

namespace Messages = PR_PreferenceMessages;

namespace {
// Reports a file that could not be read under the name by which the user knows it.
void reportUnreadable(PR_XmlFile const &file, QString const &path)
{
    if (file.state == PR_XmlFile::CannotOpen)
        Messages::report(Messages::CannotOpenForReading, MSG_Scope::Log, path);
    else if (file.state == PR_XmlFile::NotXml)
        Messages::report(Messages::CannotParse, MSG_Scope::Error, path);
}

// The text of a condition; null where there is none.
QString conditionOf(QDomElement const &element, QString const &attribute)
{
    return element.hasAttribute(attribute) ? QString(QLatin1String("") + element.attribute(attribute)) : QString();
}
} // namespace

// ---- Definitions

QString PR_Preference::getPrefsXMLPath()
{
    return PR_Loader::mainPath();
}

QString PR_Preference::getLocalPrefsXMLPath()
{
    return PR_Loader::localPath();
}

QString PR_Preference::getPrefsOverrideXMLPath()
{
    return PR_Loader::overridePath();
}

QString PR_Preference::getPrefsSetXMLPath()
{
    QString const path = getPathXml();
    if (path.isEmpty())
        return {};
    d->userFile = PR_Loader::readFile(path);
    reportUnreadable(*d->userFile, path);
    QString const name = PR_Loader::preferenceSetOf(*d->userFile);
    return name.isEmpty() ? QString() : PR_Loader::setPath(name);
}

PR_Preference::Error PR_Preference::initPreferences()
{
    clear();
    QString const path = d->isLocal ? getLocalPrefsXMLPath() : getPrefsXMLPath();
    if (path.isEmpty())
        return DefaultFileNotFound;
    PR_Loader loader(d->items);
    PR_XmlFile const &mainFile = loader.read(PR_LoadObserver::MainFile, path);
    reportUnreadable(mainFile, path);
    if (mainFile.state != PR_XmlFile::Read)
        return DefaultFileNotFound;
    QString const setPath = getPrefsSetXMLPath();
    if (!setPath.isEmpty())
        loader.read(PR_LoadObserver::PreferenceSet, setPath);
    loader.read(PR_LoadObserver::Override, getPrefsOverrideXMLPath());
    loader.define();

    if (whoami::appIsPanovia() && OSW_Lang::languageID() == HostPlatform::TermStyleLanguage) {
        QString const key = QStringLiteral("ST_TERM_STYLE");
        setBoolValue(key, true);
        if (PR_PrefItem *item = find(key))
            item->setFacilityOverride();
    }
    return NoError;
}

bool PR_Preference::isValidOnThisPlatform(QDomElement const &element)
{
    return PR_Conditions::admitsPlatform(conditionOf(element, QStringLiteral("platform")));
}

bool PR_Preference::isValidInThisMode(QDomElement const &element)
{
    return PR_Conditions::admitsMode(conditionOf(element, QStringLiteral("mode")));
}

bool PR_Preference::isValidInThisConfig(PR_PrefItem const *item)
{
    return PR_Conditions::admitsKey(item->getKey());
}

void PR_Preference::setPrefsFlavour(bool flavour)
{
    QPointer<PR_Preference> const store = this; // a receiver of a change may delete it
    for (char const *key :
        { "DRAWING_SELECT_TOOL_IS_LASSO", "CAMERA_PASTE_FORCE_KEY_FRAME", "TIMELINE_PASTE_FORCE_KEY_FRAME" }) {
        if (store)
            store->setBoolValue(QString::fromLatin1(key), !flavour);
    }
}

// ---- Values of the user

PR_Preference::Error PR_Preference::load()
{
    // Whoever receives a report, and a host's item, may call it: the load that runs goes on with what it has read.
    if (d->isLoading)
        return getErrorCode();
    QScopedValueRollback<bool> const loading(d->isLoading, true);
    d->slot.state = PL_FileSlot::Good;
    d->unresolvedFonts.clear();
    d->baseText.clear();
    d->isBaseBackup = false;
    d->isBaseOwn = false;
    Error const result = d->loadValues(*this);
    d->userFile.reset();
    d->isBaseKnown = result == NoError;
    if (result != NoError)
        d->slot.state = PL_FileSlot::Unread;
    if (d->isShared)
        d->ownBase = d->ownElements();
    d->tell(nullptr);
    return result;
}

PR_Preference::Error PR_Preference::Private::loadValues(PR_Preference &store)
{
    if (tufile::fileExists(pathXml)) {
        Error const result = store.loadXml();
        if (result != FileCorrupted)
            return result;
    }
    Error const result = store.initPreferences();
    if (result != NoError)
        return result;

    QString const textFile = oswRemapPath::RemapPath2(path);
    if (textFile.isEmpty()) {
        Messages::report(Messages::NoFileSpecified, MSG_Scope::Log);
        return NoError;
    }
    PR_Loader loader(items);
    if (!loader.loadText(textFile, [&](auto const &key, auto const &text) { store.setStringValue(key, text); }))
        Messages::report(Messages::FileNotFound, MSG_Scope::Log, path);
    unresolvedFonts = loader.unresolvedFonts;
    return NoError;
}

PR_Preference::Error PR_Preference::loadXml()
{
    d->userFile.reset();
    Error const result = initPreferences();
    if (result != NoError)
        return result;

    QString const path = getPathXml();
    QString const mapped = oswRemapPath::RemapPath2(path);
    if (path.isEmpty() || !tufile::fileExists(path) || mapped.isEmpty())
        return NoError;

    std::optional<PR_XmlFile> userFile = std::exchange(d->userFile, std::nullopt);
    if (!userFile || userFile->path != mapped)
        userFile = PR_Loader::readFile(mapped);
    if (userFile->state == PR_XmlFile::CannotOpen) {
        Messages::report(Messages::FileNotFound, MSG_Scope::Error, path);
        return FileNotFound;
    }
    if (userFile->state == PR_XmlFile::NotXml)
        d->useBackup(*userFile);
    if (userFile->state != PR_XmlFile::Read) {
        Messages::report(Messages::DefaultsLoaded, MSG_Scope::Notice, path);
        return FileCorrupted;
    }

    (void)PR_Loader::keptFileOf(mapped);
    d->isBaseBackup = userFile->path != mapped;
    d->baseText = userFile->text;
    if (!d->isBaseBackup)
        d->slot.known = userFile->version;
    PR_Loader loader(d->items);
    loader.loadUserFile(*userFile, [this](QString const &key, QString const &text) { setStringValue(key, text); });
    d->unresolvedFonts = loader.unresolvedFonts;
    return NoError;
}

// Reads the backup in the place of a damaged file, as a rule by putting it back.
void PR_Preference::Private::useBackup(PR_XmlFile &userFile)
{
    QString const file = userFile.path;
    QString const backup = PL_FileSlot::backupOf(PL_FileSlot::targetOf(file));
    if (HostPlatform::current().readOnly) {
        PR_XmlFile kept = PR_XmlFile::read(backup);
        if (kept.state == PR_XmlFile::Read) {
            userFile = std::move(kept);
            Messages::report(Messages::BackupRead, MSG_Scope::Notice, pathXml);
        }
        return;
    }
    PL_FileLock const lock(file, 2000); // another start may have mended it by then, and saved
    PR_XmlFile again = PR_XmlFile::read(file);
    if (again.state == PR_XmlFile::Read) {
        userFile = std::move(again);
        return;
    }
    if (PL_FileSlot::restoreBackup(file, true)) {
        userFile = PR_XmlFile::read(file);
        if (userFile.state != PR_XmlFile::CannotOpen)
            Messages::report(Messages::BackupRestored, MSG_Scope::Notice, pathXml);
    }
    // One that could not be put back, in a folder that cannot be written, has what the user set.
    if (userFile.state != PR_XmlFile::Read && PR_XmlFile::read(backup).state == PR_XmlFile::Read)
        slot.state = PL_FileSlot::Unread;
}

// ---- How it ended

PR_Preference::Error PR_Preference::getErrorCode() const
{
    return d->error;
}

MSG_Text PR_Preference::getErrorMessage() const
{
    switch (d->error) {
    case DefaultFileNotFound:
        return Messages::text(Messages::DefaultFileNotFound).arg(getPrefsXMLPath());
    case FileNotFound:
        return Messages::text(Messages::FileNotFound).arg(getPath());
    case NoError:
    case FileCorrupted:
        break;
    }
    return {};
}

MSG_Text PR_Preference::getPrefErrorMessage()
{
    return tuPref ? tuPref->getErrorMessage() : Messages::text(Messages::NotInitialized);
}

QString PR_Preference::getPath() const
{
    return d->path;
}

QString PR_Preference::getPathXml() const
{
    return d->pathXml;
}
