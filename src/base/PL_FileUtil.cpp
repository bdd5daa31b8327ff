#include "PL_FileUtil.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace {
fs::path nativePath(QString const &path)
{
#ifdef Q_OS_WIN
    return fs::path(path.toStdWString());
#else
    return fs::path(QFile::encodeName(path).toStdString());
#endif
}

bool rename(QString const &from, QString const &to)
{
    std::error_code code;
    fs::rename(nativePath(from), nativePath(to), code);
    return !code;
}

// The file that a path names once all links are followed, also when it does not exist; empty for a circle of links.
QString linkTarget(QString path)
{
    for (int links = 0; links < 40; ++links) {
        QFileInfo const info(path);
        if (!info.isSymLink())
            return path;
        path = info.symLinkTarget();
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

// Puts a second name of the same file in the place of a file.
bool replaceByLink(QString const &file, QString const &path)
{
    QString const temporary = newFileOf(path);
    QFile::remove(temporary);
    std::error_code code;
    fs::create_hard_link(nativePath(file), nativePath(temporary), code);
    bool const replaced = !code && rename(temporary, path);
    // Renaming changes nothing when both names are of the same file already.
    QFile::remove(temporary);
    return replaced;
}

bool syncToDisk(QFile &file)
{
    if (!file.flush())
        return false;
#ifdef Q_OS_UNIX
    return fsync(file.handle()) == 0;
#else
    return true;
#endif
}

void syncFolder(QString const &path)
{
#ifdef Q_OS_UNIX
    int const folder = open(QFile::encodeName(QFileInfo(path).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
#else
    Q_UNUSED(path)
#endif
}

bool replaceByCopy(QString const &file, QString const &path)
{
    QFile source(file);
    QFile copy(newFileOf(path));
    // What the running user may do besides is no part of the mode.
    auto const mode = source.permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    bool const copied = source.open(QIODevice::ReadOnly)
        && copy.open(QIODevice::WriteOnly | QIODevice::Truncate, QFile::ReadOwner | QFile::WriteOwner)
        && copy.write(source.readAll()) == source.size() && copy.setPermissions(mode) && syncToDisk(copy);
    copy.close();
    if (copied && rename(copy.fileName(), path))
        return true;
    copy.remove();
    return false;
}

bool isRunning(qint64 processId)
{
#ifdef Q_OS_UNIX
    return kill(pid_t(processId), 0) == 0 || errno != ESRCH;
#else
    Q_UNUSED(processId)
    return true;
#endif
}

void removeLeftNewFiles(QString const &path)
{
    QFileInfo const target(path);
    QDir const folder = target.dir();
    static QRegularExpression const tail(QStringLiteral("^~?\\.([0-9]{1,10})\\.new$"));
    for (QString const &name :
        folder.entryList({ target.fileName() + QLatin1String("*.new") }, QDir::Files | QDir::Hidden)) {
        auto const match = tail.match(name.mid(target.fileName().size()));
        if (match.hasMatch() && !isRunning(match.captured(1).toLongLong()))
            QFile::remove(folder.filePath(name));
    }
}
} // namespace

PL_FileSpec PL_FileUtil::NewFileSpec(PL_FileSpec const &spec)
{
    QString const path = spec.GetFilePath().ToQString();
    QString const target = linkTarget(path);
    return PL_FileSpec(UT_String(target.isEmpty() ? path : newFileOf(target)));
}

bool PL_FileUtil::BackupFile(PL_FileSpec const &spec)
{
    QString const target = linkTarget(spec.GetFilePath().ToQString());
    QFileInfo const info(target);
    if (!info.exists())
        return true;
    return info.isFile() && (replaceByLink(target, backupOf(target)) || replaceByCopy(target, backupOf(target)));
}

bool PL_FileUtil::RenameNewFile(PL_FileSpec const &spec)
{
    QString const target = linkTarget(spec.GetFilePath().ToQString());
    bool const renamed = !target.isEmpty() && rename(newFileOf(target), target);
    if (renamed) {
        syncFolder(target);
        removeLeftNewFiles(target);
    } else {
        QFile::remove(newFileOf(target));
    }
    return renamed;
}

bool PL_FileUtil::RestoreBackupFile(PL_FileSpec const &spec, bool keepDamaged)
{
    QString const target = linkTarget(spec.GetFilePath().ToQString());
    QString const backup = backupOf(target);
    if (target.isEmpty() || !QFileInfo(backup).isFile())
        return false;
    QString const damaged = target + QLatin1String(".bad");
    if (keepDamaged && !replaceByLink(target, damaged))
        replaceByCopy(target, damaged);
    // A copy first: whoever edits the file in place shall not change the backup with it.
    bool const restored = replaceByCopy(backup, target) || replaceByLink(backup, target);
    if (restored)
        syncFolder(target);
    return restored;
}
