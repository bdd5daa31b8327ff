#include "PR_Preference_p.h"
#include "PR_UserFileWriter_p.h"

#include "PR_ElementDom_p.h"
#include "PR_PrefConstants.h"

#include "PL_FileUtil.h"
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

namespace Messages = PR_PreferenceMessages;

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

QByteArray PR_Preference::Private::userFileBytes(QString &remark) const
{
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
    // Adds the element of an item of the library's, if it is saved; false for one of another class.
    auto const add = [&](PR_PrefItem *item, PR_XmlTree &tree, PR_Element *root) {
        PR_ItemSet::Entry const entry(item);
        PR_ItemTypes::Row const *const row = entry.exactRow();
        if (!row || item->getOrigin() != PR_PrefItem::OriginUser || !hasOwnKey(item))
            return row != nullptr;
        auto const *const font = entry.as<PR_FontItem>();
        if (font && font->value() == 0 && unresolvedFonts.contains(font->getKey()))
            tree.addItem(root, font->getTag(), font->getKey(), unresolvedFonts.value(font->getKey()));
        else
            row->write(item, tree, root);
        return true;
    };

    PR_XmlTree tree;
    if (items.hasOthers()) {
        // An item of another class sees the document so far, and adds to it what it likes.
        QDomDocument document;
        QDomElement const root = document.createElement(kPref);
        document.appendChild(root);
        items.visitByKey([&](PR_PrefItem *item) {
            PR_XmlTree own;
            if (!add(item, own, nullptr)) {
                if (hasOwnKey(item))
                    item->saveXml(&document, false);
            } else if (own.root()) {
                PR_ElementDom::append(document, root, *own.root());
            }
        });
        PR_ElementDom::add(tree, nullptr, root);
    } else {
        PR_Element *const root = tree.addElement(nullptr, kPref);
        for (PR_PrefItem *item : items.ordered())
            add(item, tree, root);
    }
    PR_UserFileWriter writer;
    QByteArray const bytes = writer.bytesOf(*tree.root());
    if (!unsavedKeys.isEmpty())
        remark = tr("Left out, as XML cannot hold their keys: %1").arg(unsavedKeys.join(u' '));
    else if (writer.isCutShort())
        remark = tr("Left out, as no load would take it: an element with too many attributes or too deeply nested.");
    return bytes;
}

// Keeps the file that is to be replaced: as the backup, or for repair when it cannot be read. A good backup is never
// replaced by a damaged file. False when the disk fails at it.
bool PR_Preference::Private::keepPresentFile(QString const &path)
{
    PL_FileSpec const spec{ UT_String(path) };
    bool const unchanged = PL_FileVersion::of(path) == goodFile;
    if (!unchanged && PR_XmlFile::read(path).state == PR_XmlFile::NotXml) {
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
        Messages::report(message, MSG_Scope::Error, path);
    };
    if (d->isLoading) // from a report or a host's item: a part of the values would replace all of them
        return failed(tr("The store is being loaded."));
    if (getPath().isEmpty() || path.isEmpty())
        return failed(tr("The store has no preference file."));

    MSG_Text error;
    if (!tufile::checkCreatePath(path, error, true)) {
        reportFailure(Messages::CannotOpenForWriting, error.getText());
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
        return reportFailure(Messages::CannotOpenForWriting, qt_error_string(EISDIR));
    if (!openNewFile(file, mapped))
        return reportFailure(Messages::CannotOpenForWriting, file.errorString());
    QString reason = writeToDisk(file, bytes);
    if (reason.isEmpty() && !d->keepPresentFile(mapped))
        reason = tr("The backup cannot be written.");
    if (!reason.isEmpty()) {
        // Closed first, which may fail: what was not written is tried again.
        file.close();
        QFile::remove(file.fileName());
        return reportFailure(Messages::WriteError, reason);
    }
    file.close();

    if (!PL_FileUtil::RenameNewFile(spec))
        return reportFailure(Messages::WriteError, tr("The new file cannot be put in the place of the old one."));
    d->goodFile = PL_FileVersion::of(mapped);
    d->saveStatus = { SaveStatus::Saved, remark };
}

PR_Preference::SaveStatus PR_Preference::saveStatus() const
{
    return d->saveStatus;
}
