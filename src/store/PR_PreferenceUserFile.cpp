#include "PR_PreferenceMessages_p.h"
#include "PR_Preference_p.h"
#include "PR_UnknownKeyItem_p.h"
#include "PR_UserFileWriter_p.h"

#include "PR_PrefConstants.h"

#include "HostPlatform.h"
#include "PL_FileUtil.h"
#include "TULex.h"
#include "oswRemapPath.h"
#include "tufile.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <cstdio>
#include <utility>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {
// Writes the bytes and flushes them to the disk; the reason of a failure, empty when all went well.
QString writeToDisk(QFile &file, QByteArray const &bytes)
{
    // QFile does not report short writes.
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
    // What a dead process left is in the way, and may be a link to anything. The names are the same for a symlink
    // loop.
    if (!open() && (file.fileName() == replaced || !QFile::remove(file.fileName()) || !open()))
        return false;
    PL_FileUtil::CopyAttributes(PL_FileSpec(UT_String(replaced)), PL_FileSpec(UT_String(file.fileName())));
    return true;
}
} // namespace

PR_Preference::Error PR_Preference::load()
{
    // Whoever receives a report, and a host's item, may call it: the load that runs goes on with what it has read.
    if (d->isLoading)
        return getErrorCode();
    QScopedValueRollback<bool> const loading(d->isLoading, true);
    d->loadFailed = false;
    d->unresolvedFonts.clear();
    Error const result = d->loadValues(*this);
    d->userFile.reset();
    d->loadFailed = d->loadFailed || result != NoError;
    d->backedUpSinceLoad = false;
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
        PR_PreferenceMessages::report(PR_PreferenceMessages::NoFileSpecified, MSG_Scope::Log);
        return NoError;
    }
    if (!tufile::whyNotReadable(textFile).isEmpty() || !QFile(textFile).open(QIODevice::ReadOnly)) {
        PR_PreferenceMessages::report(PR_PreferenceMessages::FileNotFound, MSG_Scope::Log, path);
        return NoError;
    }
    loadText(store, textFile);
    return NoError;
}

void PR_Preference::Private::loadText(PR_Preference &store, QString const &path)
{
    TULex lex;
    lex.openFile(path);
    // An item that cannot read its value has moved on to a token that may be the key of a later item.
    auto const currentToken = [&lex] { return QString(lex); };
    auto const isTakenBy = [this, &lex](PR_ItemSet::Entry const &entry) {
        QString font;
        if (entry.as<PR_FontItem>()) {
            TULex ahead = lex;
            ahead.get(false);
            font = ahead;
        }
        bool const isTaken = entry->load(lex);
        if (isTaken)
            noteFont(entry, font);
        return isTaken;
    };

    int const shortTokenLimit = 1000;
    for (int shortTokens = 0; !lex.eof() && shortTokens <= shortTokenLimit;) {
        if (items.offer(currentToken, isTakenBy))
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
        store.setStringValue(key, value);
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

    std::optional<PR_UserFile> userFile = std::exchange(d->userFile, std::nullopt);
    if (!userFile || userFile->file().path != mapped)
        userFile.emplace(mapped);
    if (userFile->file().state == PR_XmlFile::CannotOpen) {
        PR_PreferenceMessages::report(PR_PreferenceMessages::FileNotFound, MSG_Scope::Error, path);
        return FileNotFound;
    }
    if (userFile->file().state == PR_XmlFile::NotXml)
        d->useBackup(*userFile);
    if (userFile->file().state != PR_XmlFile::Read) {
        PR_PreferenceMessages::report(PR_PreferenceMessages::DefaultsLoaded, MSG_Scope::Notice, path);
        return FileCorrupted;
    }

    if (userFile->file().path == mapped)
        d->goodFile = userFile->file().version;
    for (PR_UserFile::Element const &element : userFile->elements())
        d->loadElement(*this, *userFile, element);
    return NoError;
}

// Reads the backup in the place of a damaged file, as a rule by putting it back.
void PR_Preference::Private::useBackup(PR_UserFile &userFile)
{
    QString const file = userFile.file().path;
    PL_FileSpec const spec{ UT_String(file) };
    QString const backup = PL_FileUtil::BackupFileSpec(spec).GetFilePath().ToQString();
    if (HostPlatform::current().readOnly) {
        PR_UserFile kept(backup);
        if (kept.file().state == PR_XmlFile::Read) {
            userFile = std::move(kept);
            PR_PreferenceMessages::report(PR_PreferenceMessages::BackupRead, MSG_Scope::Notice, pathXml);
        }
        return;
    }
    if (PL_FileUtil::RestoreBackupFile(spec, true)) {
        userFile = PR_UserFile(file);
        if (userFile.file().state != PR_XmlFile::CannotOpen)
            PR_PreferenceMessages::report(PR_PreferenceMessages::BackupRestored, MSG_Scope::Notice, pathXml);
    }
    // One that could not be put back, in a folder that cannot be written, has what the user set.
    if (userFile.file().state != PR_XmlFile::Read)
        loadFailed = PR_UserFile(backup).file().state == PR_XmlFile::Read;
}

void PR_Preference::Private::loadElement(
    PR_Preference &store, PR_UserFile const &userFile, PR_UserFile::Element const &element)
{
    auto const isTakenBy = [&](PR_ItemSet::Entry const &entry) {
        bool isTaken = false;
        bool const isOwn =
            entry.visitExact([&](auto *item) { isTaken = PR_ItemElementAccess::load(*item, element.content); });
        if (!isOwn)
            return userFile.offer(element, *entry.item());
        if (isTaken)
            noteFont(entry, element.content.attribute(kValue));
        return isTaken;
    };

    QString const &key = element.content.id;
    if (items.offer([&key] { return key; }, isTakenBy) || key.isEmpty())
        return;
    auto item = PR_UnknownKeyItem::create(element.content.tag, key);
    if (!item || !isTakenBy(PR_ItemSet::Entry(item.get())))
        store.setStringValue(key, element.content.value());
    else if (!items.find(key))
        items.insert(std::move(item));
}

// Takes note of the name that an item has just read.
void PR_Preference::Private::noteFont(PR_ItemSet::Entry const &entry, QString const &name)
{
    auto const *const font = entry.as<PR_FontItem>();
    bool const isUsers = font && font->getOrigin() == PR_PrefItem::OriginUser;
    if (isUsers && font->EnumNameList().isEmpty() && !name.isEmpty())
        unresolvedFonts.insert(font->getKey(), name);
}

QByteArray PR_Preference::Private::userFileBytes(QString &remark) const
{
    PR_UserFileWriter writer;
    QStringList unsavedKeys;
    QSet<QString> mendedKeys;
    // Whether an item keeps a key of its own without the characters that XML cannot hold.
    auto const hasOwnKey = [&](PR_PrefItem const *item) {
        QString const key = PR_UserFileWriter::xmlText(item->getKey());
        if (key == item->getKey())
            return true;
        bool const isFree = !key.isEmpty() && !items.find(key) && !mendedKeys.contains(key);
        if (isFree)
            mendedKeys.insert(key);
        else if (item->getOrigin() == PR_PrefItem::OriginUser)
            unsavedKeys.append(key);
        return isFree;
    };
    // Hands the element of an item of the library's on, if it is saved; false for one of another class.
    auto const passElement = [&](PR_PrefItem *item, auto const &receiver) {
        PR_ItemSet::Entry const entry(item);
        return entry.visitExact([&](auto const *typed) {
            if (typed->getOrigin() != PR_PrefItem::OriginUser || !hasOwnKey(typed))
                return;
            auto const *const font = entry.as<PR_FontItem>();
            bool const isUnresolved = font && font->value() == 0 && unresolvedFonts.contains(font->getKey());
            receiver(isUnresolved
                    ? PR_ItemElement::of(typed->getTag(), typed->getKey(), unresolvedFonts.value(typed->getKey()))
                    : PR_ItemElementAccess::of(*typed));
        });
    };

    if (items.hasOthers()) {
        // An item of another class sees the document so far, and adds to it what it likes.
        QDomDocument document;
        QDomElement const root = document.createElement(kPref);
        document.appendChild(root);
        items.visitByKey([&](PR_PrefItem *item) {
            bool const isOwn =
                passElement(item, [&document](PR_ItemElement const &element) { element.appendTo(&document); });
            if (!isOwn && hasOwnKey(item))
                item->saveXml(&document, false);
        });
        writer.addContentOf(root);
    } else {
        for (PR_PrefItem *item : items.ordered())
            passElement(item, [&writer](PR_ItemElement const &element) { writer.add(element); });
    }
    if (!unsavedKeys.isEmpty())
        remark = tr("Left out, as XML cannot hold their keys: %1").arg(unsavedKeys.join(u' '));
    else if (writer.isCutShort())
        remark = tr("Left out, as no load would take it: an element with too many attributes or too deeply nested.");
    return writer.bytes();
}

// Keeps the file that is to be replaced: as the backup, or for repair when it cannot be read. A good backup is never
// replaced by a damaged file. False when the disk fails at it.
bool PR_Preference::Private::keepPresentFile(QString const &path)
{
    PL_FileSpec const spec{ UT_String(path) };
    bool const unchanged = PR_FileState::of(path) == goodFile;
    if (!unchanged && PR_UserFile(path).file().state == PR_XmlFile::NotXml) {
        PL_FileUtil::KeepDamagedFile(spec);
        backedUpSinceLoad = true;
        return true;
    }
    bool isSynced = true;
    if (!loadFailed || !backedUpSinceLoad)
        PL_FileUtil::BackupFile(spec, &isSynced);
    backedUpSinceLoad = true;
    return isSynced;
}

void PR_Preference::save()
{
    QString const path = getPathXml();
    auto const failed = [this](QString const &reason) { d->saveStatus = { SaveStatus::Failed, reason }; };
    auto const reportFailure = [&](char const *message, QString const &reason) {
        failed(reason);
        PR_PreferenceMessages::report(message, MSG_Scope::Error, path);
    };
    if (d->isLoading) // from a report or a host's item: a part of the values would replace all of them
        return failed(tr("The store is being loaded."));
    if (getPath().isEmpty() || path.isEmpty())
        return failed(tr("The store has no preference file."));

    MSG_Text error;
    if (!tufile::checkCreatePath(path, error, true)) {
        reportFailure(PR_PreferenceMessages::CannotOpenForWriting, error.getText());
        std::fprintf(stderr, "Unable create preference file: %s. %s\n", path.toUtf8().constData(),
            error.getText().toUtf8().constData());
        return;
    }

    QString remark;
    QByteArray const bytes = d->userFileBytes(remark);
    QString const mapped = oswRemapPath::RemapPath2(path);
    PL_FileSpec const spec{ UT_String(mapped) };
    QFile file(PL_FileUtil::NewFileSpec(spec).GetFilePath().ToQString());
    if (QFileInfo(mapped).isDir())
        return reportFailure(PR_PreferenceMessages::CannotOpenForWriting, qt_error_string(EISDIR));
    if (!openNewFile(file, mapped))
        return reportFailure(PR_PreferenceMessages::CannotOpenForWriting, file.errorString());
    QString reason = writeToDisk(file, bytes);
    if (reason.isEmpty() && !d->keepPresentFile(mapped))
        reason = tr("The backup cannot be written.");
    if (!reason.isEmpty()) {
        // Closed first, which may fail: what was not written is tried again.
        file.close();
        QFile::remove(file.fileName());
        return reportFailure(PR_PreferenceMessages::WriteError, reason);
    }
    file.close();

    if (!PL_FileUtil::RenameNewFile(spec))
        return reportFailure(
            PR_PreferenceMessages::WriteError, tr("The new file cannot be put in the place of the old one."));
    d->goodFile = PR_FileState::of(mapped);
    d->saveStatus = { SaveStatus::Saved, remark };
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
