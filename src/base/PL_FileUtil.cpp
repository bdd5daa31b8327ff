#include "PL_FileUtil.h"

#include "NativePath_p.h"

#include <QCoreApplication>
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QRegularExpression>
#include <QSet>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace {
bool rename(QString const &from, QString const &to)
{
    std::error_code code;
    fs::rename(nativePath(from), nativePath(to), code);
    return !code;
}

// The file that a path names once all links are followed, also when it does not exist; empty for a symlink loop.
QString linkTarget(QString path)
{
    for (int links = 0; links < 40; ++links) {
        fs::path const link = nativePath(path);
        std::error_code code;
        if (!fs::is_symlink(link, code))
            return path;
        // Not QFileInfo::symLinkTarget(): it shortens "a/..", though a may be a link itself.
        fs::path const target = link.parent_path() / fs::read_symlink(link, code);
        fs::path const folder = fs::canonical(target.parent_path(), code);
        path = pathOf((code ? target.parent_path() : folder) / target.filename());
    }
    return {};
}

QString newFileOf(QString const &path)
{
    return path + QLatin1Char('.') + QString::number(QCoreApplication::applicationPid()) + QLatin1String(".new");
}

QString backupOf(QString const &path)
{
    return path + QLatin1Char('~');
}

// Syncs a file or a folder; false when the disk refuses. Some folders cannot be opened, and some file systems sync
// none.
bool syncToDisk(QString const &path)
{
#ifdef Q_OS_UNIX
    int const descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return true;
    bool const isSynced = fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
    close(descriptor);
    return isSynced;
#else
    Q_UNUSED(path)
    return true;
#endif
}

bool syncFolderOf(QString const &path)
{
    return syncToDisk(QFileInfo(path).path());
}

// Puts a second name of the same file in the place of a file.
bool replaceByLink(QString const &file, QString const &path)
{
    QString const temporary = newFileOf(path);
    std::error_code code;
    fs::create_hard_link(nativePath(file), nativePath(temporary), code);
    if (code) { // in the way of what a dead process left
        QFile::remove(temporary);
        fs::create_hard_link(nativePath(file), nativePath(temporary), code);
    }
    bool const replaced = !code && rename(temporary, path);
    // Renaming changes nothing when both names are of the same file already.
    QFile::remove(temporary);
    return replaced;
}

// Puts a copy in the place of a file, whose permission bits stay.
bool replaceByCopy(QString const &file, QString const &path, bool *isSynced)
{
    QString const temporary = newFileOf(path);
    QFile::remove(temporary); // left by a dead process, it may be a link to anything
    std::error_code code;
    fs::copy_file(nativePath(file), nativePath(temporary), code);
    auto const takesAttributesOf = [&temporary](QString const &other) {
        return PL_FileUtil::CopyAttributes(PL_FileSpec(UT_String(other)), PL_FileSpec(UT_String(temporary)));
    };
    if (!code && (takesAttributesOf(path) || takesAttributesOf(file))) {
        bool const synced = syncToDisk(temporary);
        if (isSynced)
            *isSynced = synced;
        if (synced && rename(temporary, path))
            return true;
    }
    QFile::remove(temporary);
    return false;
}

// A copy first: whoever edits one of the files in place shall not change the other with it. A full disk has room for a
// link alone.
bool replaceByCopyOrLink(QString const &file, QString const &path)
{
    return replaceByCopy(file, path, nullptr) || replaceByLink(file, path);
}

QByteArray contentOf(QString const &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isRunning(int processId)
{
#ifdef Q_OS_UNIX
    return kill(processId, 0) == 0 || errno != ESRCH;
#else
    Q_UNUSED(processId)
    return true;
#endif
}

// Whether this process comes to a file for the first time.
bool isFirstTime(QString const &path)
{
    static QMutex mutex;
    static QSet<QString> known;
    QMutexLocker const lock(&mutex);
    auto const before = known.size();
    known.insert(path);
    return known.size() > before;
}

// Removes the stale new files of a file and of what is kept beside it.
void removeStaleNewFiles(QString const &path)
{
    static QRegularExpression const tail(QStringLiteral("^(?:~|\\.bad)?\\.([1-9][0-9]*)\\.new$"));
    QFileInfo const target(path);
    std::error_code code;
    fs::directory_iterator file(nativePath(target.path()), code);
    for (; !code && file != fs::directory_iterator(); file.increment(code)) {
        QString const name = pathOf(file->path().filename());
        if (!name.endsWith(QLatin1String(".new")) || !name.startsWith(target.fileName()))
            continue;
        int const processId = tail.match(name.mid(target.fileName().size())).captured(1).toInt();
        std::error_code ignored;
        if (processId > 0 && !isRunning(processId))
            fs::remove(file->path(), ignored);
    }
}
} // namespace

PL_FileSpec PL_FileUtil::NewFileSpec(PL_FileSpec const &spec)
{
    QString const path = spec.GetFilePath().ToQString();
    QString const target = linkTarget(path);
    return PL_FileSpec(UT_String(target.isEmpty() ? path : newFileOf(target)));
}

PL_FileSpec PL_FileUtil::BackupFileSpec(PL_FileSpec const &spec)
{
    QString const path = spec.GetFilePath().ToQString();
    QString const target = linkTarget(path);
    return PL_FileSpec(UT_String(backupOf(target.isEmpty() ? path : target)));
}

bool PL_FileUtil::BackupFile(PL_FileSpec const &spec)
{
    return BackupFile(spec, nullptr);
}

bool PL_FileUtil::BackupFile(PL_FileSpec const &spec, bool *isSynced)
{
    QString const target = linkTarget(spec.GetFilePath().ToQString());
    QFileInfo const info(target);
    return !info.exists()
        || (info.isFile()
            && (replaceByLink(target, backupOf(target)) || replaceByCopy(target, backupOf(target), isSynced)));
}

bool PL_FileUtil::RenameNewFile(PL_FileSpec const &spec)
{
    QString const target = linkTarget(spec.GetFilePath().ToQString());
    if (target.isEmpty())
        return false;
    if (!rename(newFileOf(target), target)) {
        QFile::remove(newFileOf(target));
        return false;
    }
    if (isFirstTime(target))
        removeStaleNewFiles(target);
    return syncFolderOf(target);
}

bool PL_FileUtil::RestoreBackupFile(PL_FileSpec const &spec, bool keepDamaged)
{
    QString const target = linkTarget(spec.GetFilePath().ToQString());
    if (target.isEmpty())
        return false;
    if (keepDamaged)
        KeepDamagedFile(spec);
    QString const backup = backupOf(target);
    bool const isRestored = QFileInfo(backup).isFile() && replaceByCopyOrLink(backup, target);
    if (isRestored)
        (void)syncFolderOf(target); // the backup is there all the same
    return isRestored;
}

bool PL_FileUtil::CopyAttributes(PL_FileSpec const &from, PL_FileSpec const &to)
{
    QString const source = from.GetFilePath().ToQString();
    fs::path const target = nativePath(to.GetFilePath().ToQString());
    std::error_code code;
    fs::file_status const status = fs::status(nativePath(source), code);
    if (!fs::exists(status))
        return false;
#ifdef Q_OS_UNIX
    // Some file systems have no owners.
    QFileInfo const info(source);
    [[maybe_unused]] bool const given = geteuid() == 0 && chown(target.c_str(), info.ownerId(), info.groupId()) == 0;
#endif
    fs::permissions(target, status.permissions(), code);
    return !code;
}

bool PL_FileUtil::KeepDamagedFile(PL_FileSpec const &spec)
{
    QString const target = linkTarget(spec.GetFilePath().ToQString());
    QByteArray const content = contentOf(target);
    // Nothing to repair from: an empty file, or one that a damaged backup was copied to.
    if (content.isEmpty() || content == contentOf(backupOf(target)))
        return true;
    return replaceByCopyOrLink(target, target + QLatin1String(".bad"));
}
