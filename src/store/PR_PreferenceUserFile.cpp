#include "PR_PreferenceMessages_p.h"
#include "PR_Preference_p.h"
#include "PR_UndefinedItem_p.h"
#include "PR_UserFileWriter_p.h"

#include "PR_PrefConstants.h"

#include "PL_FileUtil.h"
#include "TULex.h"
#include "oswRemapPath.h"
#include "tufile.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {
// Writes the bytes and flushes them to the disk; the reason of a failure, empty when all went well.
QString writeToDisk(QFile &file, QByteArray const &bytes)
{
    // An error of QFile does not tell of a write that was cut short.
    if (file.write(bytes) != bytes.size() || !file.flush() || file.size() != bytes.size())
        return file.error() == QFile::NoError ? qt_error_string(ENOSPC) : file.errorString();
#ifdef Q_OS_UNIX
    if (fsync(file.handle()) != 0)
        return qt_error_string(errno);
#endif
    return {};
}

// Opens a new file that nobody else can read, or with the attributes of the file that it will replace. Some file
// systems have none.
bool openNewFile(QFile &file, QString const &replaced)
{
    auto const open = [&file] {
        return file.open(
            QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered, QFile::ReadOwner | QFile::WriteOwner);
    };
    // What a dead process left is in the way, and may be a link to anything. The names are the same for a circle of
    // links.
    if (!open() && (file.fileName() == replaced || !QFile::remove(file.fileName()) || !open()))
        return false;
    PL_FileUtil::CopyAttributes(PL_FileSpec(UT_String(replaced)), PL_FileSpec(UT_String(file.fileName())));
    return true;
}
} // namespace

PR_Preference::Error PR_Preference::load()
{
    d->loadFailed = false;
    Error const result = loadValues();
    d->userFile.reset();
    d->loadFailed = d->loadFailed || result != NoError;
    d->backedUpSinceLoad = false;
    return result;
}

PR_Preference::Error PR_Preference::loadValues()
{
    if (tufile::fileExists(getPathXml())) {
        Error const result = loadXml();
        if (result != FileCorrupted)
            return result;
    }
    Error const result = initPreferences();
    if (result != NoError)
        return result;

    QString const path = oswRemapPath::RemapPath2(getPath());
    if (path.isEmpty()) {
        PR_PreferenceMessages::report(PR_PreferenceMessages::NoFileSpecified, MSG_Scope::Log);
        return NoError;
    }
    if (!tufile::whyNotReadable(path).isEmpty() || !QFile(path).open(QIODevice::ReadOnly)) {
        PR_PreferenceMessages::report(PR_PreferenceMessages::FileNotFound, MSG_Scope::Log, getPath());
        return NoError;
    }
    loadText(path);
    return NoError;
}

void PR_Preference::loadText(QString const &path)
{
    TULex lex;
    lex.openFile(path);
    // Offers the lexer to the item of the current token. An item that cannot read its value has moved on to a token
    // that may be the key of a later item.
    auto const isTaken = [&] {
        QString token = lex;
        while (auto const entry = d->items.find(token)) {
            if (entry->load(lex))
                return true;
            QString const next = lex;
            if (next <= token)
                return false;
            token = next;
        }
        return false;
    };

    int const shortTokenLimit = 1000;
    for (int shortTokens = 0; !lex.eof() && shortTokens <= shortTokenLimit;) {
        if (isTaken())
            continue;
        QString const key = lex;
        if (key.size() < 2) {
            lex.skipToNextLine();
            ++shortTokens;
            continue;
        }
        lex.get(false);
        QString const value = lex;
        lex.get(false);
        setStringValue(key, value);
    }
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

    if (!d->userFile || d->userFile->file().path != mapped)
        d->userFile.emplace(mapped);
    PL_FileSpec const spec{ UT_String(mapped) };
    PR_UserFile const *userFile = &*d->userFile;
    if (userFile->file().state == PR_XmlFile::CannotOpen) {
        PR_PreferenceMessages::report(PR_PreferenceMessages::FileNotFound, MSG_Scope::Error, path);
        return FileNotFound;
    }
    if (userFile->file().state == PR_XmlFile::NotXml && PL_FileUtil::RestoreBackupFile(spec, true)) {
        userFile = &d->userFile.emplace(mapped);
        if (userFile->file().state != PR_XmlFile::CannotOpen)
            PR_PreferenceMessages::report(PR_PreferenceMessages::BackupRestored, MSG_Scope::Notice, path);
    }
    if (userFile->file().state != PR_XmlFile::Read) {
        // One that could not be put back, in a folder that cannot be written, has what the user set.
        d->loadFailed =
            PR_UserFile(PL_FileUtil::BackupFileSpec(spec).GetFilePath().ToQString()).file().state == PR_XmlFile::Read;
        PR_PreferenceMessages::report(PR_PreferenceMessages::DefaultsLoaded, MSG_Scope::Notice, path);
        return FileCorrupted;
    }

    d->goodFile = userFile->file().version;
    for (PR_UserFile::Element const &element : userFile->elements())
        d->loadElement(*this, element);
    return NoError;
}

void PR_Preference::Private::loadElement(PR_Preference &store, PR_UserFile::Element const &element)
{
    auto const isTakenBy = [&element](PR_ItemSet::Entry const &entry) {
        bool taken = false;
        return entry.visitOwn([&](auto *item) { taken = item->loadElement(element.content); })
            ? taken
            : element.loadInto(*entry.item());
    };

    QString const &key = element.content.id;
    auto const held = items.find(key);
    if ((held && isTakenBy(held)) || key.isEmpty())
        return;
    auto item = PR_UndefinedItem::create(element.content.tag, key);
    if (!item || !isTakenBy(PR_ItemSet::Entry(item.get())))
        store.setStringValue(key, element.content.value());
    else if (!held)
        items.insert(std::move(item));
}

QByteArray PR_Preference::userFileBytes() const
{
    PR_UserFileWriter writer;
    QSet<QString> mendedKeys;
    for (PR_PrefItem *item : *this) {
        PR_ItemSet::Entry const entry(item);
        bool saved = true; // an item of another class knows by itself
        entry.visitOwn([&saved](auto *typed) { saved = typed->isSaved(false); });
        if (!saved)
            continue;
        // Without the characters that XML cannot hold, a key must not become that of another item.
        QString const key = PR_ItemElement::xmlText(item->getKey());
        if (key != item->getKey()) {
            if (key.isEmpty() || d->items.find(key) || mendedKeys.contains(key))
                continue;
            mendedKeys.insert(key);
        }
        if (!entry.visitOwn([&writer](auto *typed) { writer.add(typed->element()); })) {
            QDomDocument document;
            document.appendChild(document.createElement(kPref));
            item->saveXml(&document, false);
            QDomElement element = document.documentElement().firstChildElement();
            for (; !element.isNull(); element = element.nextSiblingElement())
                writer.add(element);
        }
    }
    return writer.bytes();
}

// Keeps the file that is to be replaced: as the backup, or for repair when it cannot be read. A good backup is never
// replaced by a damaged file.
void PR_Preference::keepPresentFile(QString const &path)
{
    PL_FileSpec const spec{ UT_String(path) };
    bool const unchanged = PR_FileState::of(path) == d->goodFile;
    if (!unchanged && PR_UserFile(path).file().state == PR_XmlFile::NotXml) {
        PL_FileUtil::KeepDamagedFile(spec);
        d->backedUpSinceLoad = true;
        return;
    }
    if (!d->loadFailed || !d->backedUpSinceLoad)
        PL_FileUtil::BackupFile(spec);
    d->backedUpSinceLoad = true;
}

void PR_Preference::save()
{
    QString const path = getPathXml();
    auto const failed = [this](QString const &reason) { d->saveStatus = { SaveStatus::Failed, reason }; };
    auto const reportFailure = [&](char const *message, QString const &reason) {
        failed(reason);
        PR_PreferenceMessages::report(message, MSG_Scope::Error, path);
    };
    if (getPath().isEmpty() || path.isEmpty())
        return failed(tr("The store has no preference file."));

    MSG_Text error;
    if (!tufile::checkCreatePath(path, error, true)) {
        reportFailure(PR_PreferenceMessages::CannotOpenForWriting, error.getText());
        std::fprintf(stderr, "Unable create preference file: %s. %s\n", path.toUtf8().constData(),
            error.getText().toUtf8().constData());
        return;
    }

    QByteArray const bytes = userFileBytes();
    QString const mapped = oswRemapPath::RemapPath2(path);
    PL_FileSpec const spec{ UT_String(mapped) };
    QFile file(PL_FileUtil::NewFileSpec(spec).GetFilePath().ToQString());
    if (QFileInfo(mapped).isDir())
        return reportFailure(PR_PreferenceMessages::CannotOpenForWriting, qt_error_string(EISDIR));
    if (!openNewFile(file, mapped))
        return reportFailure(PR_PreferenceMessages::CannotOpenForWriting, file.errorString());
    QString const reason = writeToDisk(file, bytes);
    if (!reason.isEmpty()) {
        // Closed first, which may fail: what was not written is tried again.
        file.close();
        QFile::remove(file.fileName());
        return reportFailure(PR_PreferenceMessages::WriteError, reason);
    }
    file.close();

    keepPresentFile(mapped);
    if (!PL_FileUtil::RenameNewFile(spec))
        return reportFailure(
            PR_PreferenceMessages::WriteError, tr("The new file cannot be put in the place of the old one."));
    d->goodFile = PR_FileState::of(mapped);
    d->saveStatus = { SaveStatus::Saved, {} };
}

PR_Preference::SaveStatus PR_Preference::saveStatus() const
{
    return d->saveStatus;
}

QString PR_Preference::getPath() const
{
    return d->path;
}

QString PR_Preference::getPathXml() const
{
    return d->pathXml;
}

PR_Preference::Error PR_Preference::getErrorCode() const
{
    return d->error;
}

MSG_Text PR_Preference::getErrorMessage() const
{
    switch (d->error) {
    case DefaultFileNotFound:
        return PR_PreferenceMessages::text(PR_PreferenceMessages::DefaultFileNotFound).arg(getPrefsXMLPath());
    case FileNotFound:
        return PR_PreferenceMessages::text(PR_PreferenceMessages::FileNotFound).arg(getPath());
    case NoError:
    case FileCorrupted:
        break;
    }
    return {};
}

MSG_Text PR_Preference::getPrefErrorMessage()
{
    return tuPref ? tuPref->getErrorMessage() : PR_PreferenceMessages::text(PR_PreferenceMessages::NotInitialized);
}
