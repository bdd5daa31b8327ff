#include "PL_FileSlot_p.h"

#include "NativePath_p.h"
#include "PL_FileOperations_p.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QRandomGenerator>
#include <QSet>
#include <QStringList>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {
PL_FileOperations &operations()
{
    return PL_FileOperations::current();
}

QByteArray native(QString const &path)
{
    return QFile::encodeName(path);
}

bool isThere(struct stat const &status)
{
    return status.st_nlink > 0;
}

// The status of a file; one without names when there is none.
struct stat statusOf(QString const &path)
{
    struct stat status = {};
    if (operations().status(native(path), status) != 0)
        status = {};
    return status;
}

// Whether a name is that of the file that is open.
bool isNameOf(QByteArray const &path, int file)
{
    struct stat own = {}, named = {};
    return operations().status(file, own) == 0 && operations().status(path, named) == 0 && own.st_ino == named.st_ino
        && own.st_dev == named.st_dev;
}

bool renameFile(QString const &from, QString const &to)
{
    return operations().rename(native(from), native(to)) == 0;
}

void removeFile(QString const &path)
{
    (void)operations().remove(native(path));
}

// Some file systems sync no folders.
int syncFile(int file)
{
    int result = 0;
    do
        result = operations().sync(file);
    while (result != 0 && errno == EINTR);
    return result;
}

bool syncFolderOf(QString const &path)
{
    int const folder = operations().open(native(QFileInfo(path).path()), O_RDONLY | O_DIRECTORY);
    if (folder < 0) // one that may be written but not read
        return true;
    bool const isSynced = syncFile(folder) == 0 || errno == EINVAL || errno == ENOTSUP;
    operations().close(folder);
    return isSynced;
}

// A new file that nobody else can read, and that other processes leave alone as long as it is open.
class NewFile {
public:
    explicit NewFile(QString const &target)
    {
        for (int tries = 0; tries < 100 && m_file < 0; ++tries) {
            m_path = PL_FileSlot::newFileOf(target);
            m_file = operations().open(native(m_path), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
            m_error = errno;
            if (m_file < 0 && m_error != EEXIST)
                break;
            if (m_file < 0)
                continue;
            // Where there are no locks, stale files stay. Before it was locked, somebody may have taken it for one.
            bool const isTaken = operations().lock(m_file) != 0 && errno == EWOULDBLOCK;
            if (isTaken || !isNameOf(native(m_path), m_file)) {
                operations().close(m_file);
                m_file = -1;
            }
        }
    }

    ~NewFile()
    {
        if (m_file >= 0) {
            operations().close(m_file);
            if (!m_isInPlace)
                removeFile(m_path);
        }
    }

    bool isOpen() const { return m_file >= 0; }
    QString error() const { return qt_error_string(m_error); }

    // Mode, owner and group of another file. Where the system refuses them, the new file is for fewer people, never for
    // more.
    bool takeAttributes(struct stat const &other)
    {
        struct stat own = {};
        (void)operations().status(m_file, own);
        if (geteuid() == 0 ? own.st_uid != other.st_uid || own.st_gid != other.st_gid : own.st_gid != other.st_gid) {
            (void)operations().setOwner(m_file, geteuid() == 0 ? other.st_uid : uid_t(-1), other.st_gid);
            (void)operations().status(m_file, own);
        }
        mode_t const forGroup = own.st_gid == other.st_gid ? 0777 : 0707;
        mode_t const mode = other.st_mode & forGroup;
        return mode == 0600 || operations().setMode(m_file, mode) == 0;
    }

    // What root makes in a user's folder is the user's.
    void beginAnew(QString const &target, mode_t mode)
    {
        if (mode != 0600)
            (void)operations().setMode(m_file, mode);
        if (geteuid() != 0)
            return;
        struct stat const folder = statusOf(QFileInfo(target).path());
        if (S_ISDIR(folder.st_mode) && folder.st_uid != 0)
            (void)operations().setOwner(m_file, folder.st_uid, folder.st_gid);
    }

    bool write(QByteArray const &bytes)
    {
        qsizetype written = 0;
        while (written < bytes.size()) {
            ssize_t const count =
                operations().write(m_file, bytes.constData() + written, size_t(bytes.size() - written));
            if (count <= 0 && !(count < 0 && errno == EINTR))
                return fail(count == 0 ? ENOSPC : errno);
            written += qMax<ssize_t>(count, 0);
        }
        return syncFile(m_file) == 0 || fail(errno);
    }

    bool rename(QString const &target)
    {
        // Somebody may have taken the name for a file of his own.
        m_isInPlace = isNameOf(native(m_path), m_file) && renameFile(m_path, target);
        return m_isInPlace;
    }

private:
    Q_DISABLE_COPY_MOVE(NewFile)

    bool fail(int error)
    {
        m_error = error;
        return false;
    }

    QString m_path;
    int m_file = -1;
    int m_error = 0;
    bool m_isInPlace = false;
};

// Puts a second name of the same file in the place of a file.
bool replaceByLink(QString const &file, QString const &path, QString const &target)
{
    QString const temporary = PL_FileSlot::newFileOf(target);
    bool const isLinked = operations().link(native(file), native(temporary)) == 0;
    bool const isReplaced = isLinked && renameFile(temporary, path);
    // Renaming changes nothing when both names are of the same file already, as another program may have made them.
    if (isLinked)
        removeFile(temporary);
    return isReplaced;
}

// Puts a copy in the place of a file, whose mode stays.
bool replaceByCopy(QString const &file, QString const &path, QString const &target)
{
    PL_InputFile const content = PL_InputFile::read(file);
    struct stat const present = statusOf(path);
    struct stat const source = statusOf(file);
    if (!content.error.isEmpty())
        return false;
    NewFile copy(target);
    if (!copy.isOpen() || !copy.takeAttributes(isThere(present) ? present : source))
        return false;
    return copy.write(content.bytes) && copy.rename(path);
}

// A copy first: whoever edits one of the files in place shall not change the other with it. A full disk has room for a
// link alone.
bool replaceByCopyOrLink(QString const &file, QString const &path, QString const &target)
{
    return replaceByCopy(file, path, target) || replaceByLink(file, path, target);
}

bool backUpTarget(QString const &target, struct stat const &present)
{
    QString const backup = PL_FileSlot::backupOf(target);
    return !isThere(present)
        || (S_ISREG(present.st_mode)
            && (replaceByLink(target, backup, target) || replaceByCopy(target, backup, target)));
}

// The name of a file with an ending of eleven bytes, cut where that would be too long for a name.
QString stemOf(QString const &name)
{
    QString stem = name;
    while (native(stem).size() > NAME_MAX - 11)
        stem.chop(1);
    return stem;
}

QString const newFileMark = QStringLiteral(".new-");

// Removes the new files that dead processes left: nobody holds a lock on them.
void removeStaleNewFiles(QString const &target)
{
    QFileInfo const info(target);
    QString const begin = stemOf(info.fileName()) + newFileMark;
    auto const isName = [&begin](QString const &name) {
        return name.size() == begin.size() + 6 && name.startsWith(begin)
            && std::all_of(name.begin() + begin.size(), name.end(),
                [](QChar c) { return c.unicode() < 128 && c.isLetterOrNumber(); });
    };
    std::error_code code;
    fs::directory_iterator file(nativePath(info.path()), code);
    for (; !code && file != fs::directory_iterator(); file.increment(code)) {
        if (!isName(pathOf(file->path().filename())))
            continue;
        QString const path = pathOf(file->path());
        struct stat status = {};
        int const stale = operations().open(native(path), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
        if (stale < 0)
            continue;
        if (operations().status(stale, status) == 0 && S_ISREG(status.st_mode) && operations().lock(stale) == 0)
            removeFile(path);
        operations().close(stale);
    }
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
} // namespace

QString PL_FileSlot::targetOf(QString path)
{
    if (path.contains(QChar::Null)) // would name another file
        return {};
    for (int links = 0; links < 40; ++links) {
        if (!S_ISLNK(statusOf(path).st_mode))
            return path;
        // Not QFileInfo::symLinkTarget(): it shortens "a/..", though a may be a link itself.
        std::error_code code;
        fs::path const link = nativePath(path);
        fs::path const target = link.parent_path() / fs::read_symlink(link, code);
        fs::path const folder = fs::canonical(target.parent_path(), code);
        path = pathOf((code ? target.parent_path() : folder) / target.filename());
    }
    return {};
}

QString PL_FileSlot::newFileOf(QString const &target)
{
    static char const characters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    QFileInfo const info(target);
    QString path = target.chopped(info.fileName().size()) + stemOf(info.fileName()) + newFileMark;
    for (int i = 0; i < 6; ++i)
        path += QLatin1Char(characters[QRandomGenerator::system()->bounded(36)]);
    return path;
}

PL_FileSlot::Result PL_FileSlot::replace(
    QString const &path, QByteArray const &bytes, IsDamaged const &isDamaged, PL_FileVersion const *expected)
{
    QString const target = targetOf(path);
    if (target.isEmpty())
        return { Result::CannotOpen, qt_error_string(ELOOP) };
    struct stat const present = statusOf(target);
    if (isThere(present) && !S_ISREG(present.st_mode))
        return { Result::CannotOpen,
            S_ISDIR(present.st_mode) ? qt_error_string(EISDIR)
                                     : QCoreApplication::translate("PL_FileSlot", "It is no regular file.") };
    if (bytes.size() > PL_InputFile::MaximumSize)
        return { Result::CannotWrite,
            QCoreApplication::translate("PL_FileSlot", "The file would be too large to be read.") };
    if (expected && !(PL_FileVersion::of(present) == *expected))
        return { Result::Changed, QCoreApplication::translate("PL_FileSlot", "Another program changed the file.") };

    NewFile file(target);
    if (!file.isOpen())
        return { Result::CannotOpen, file.error() };
    if (isThere(present))
        (void)file.takeAttributes(present);
    else
        file.beginAnew(target, modeOfNewFile);
    if (!file.write(bytes))
        return { Result::CannotWrite, file.error() };

    if (isThere(present)) {
        bool const isUnchanged = PL_FileVersion::of(present) == known;
        bool isSafe = true;
        if (!isUnchanged && isDamaged(target)) {
            if (!keepDamaged(target)) // a full disk still has room for another name
                (void)renameFile(target, target + QLatin1String(".bad"));
            if (state == Unread && !isThere(statusOf(keptOf(target)))) // the backup, which could not be put back
                isKept = replaceByCopyOrLink(backupOf(target), keptOf(target), target);
        } else if (state == Unread) {
            bool const isBackedUp = backUpTarget(target, present);
            isKept = !isThere(statusOf(keptOf(target))) && replaceByCopyOrLink(target, keptOf(target), target);
            isSafe = isBackedUp || isKept;
        } else if (state != Rescued || (isKept && !isUnchanged)) {
            // Where there cannot be a backup, what nobody has read stays.
            isSafe = backUpTarget(target, present) || isUnchanged || PL_InputFile::read(target).error.isEmpty();
        }
        if (!isSafe)
            return { Result::CannotWrite, QCoreApplication::translate("PL_FileSlot", "The backup cannot be written.") };
    }
    if (expected) {
        PL_FileVersion now = PL_FileVersion::of(target);
        now.changed = expected->changed; // which the backup did
        if (!(now == *expected))
            return { Result::Changed, QCoreApplication::translate("PL_FileSlot", "Another program changed the file.") };
    }
    if (!file.rename(target))
        return { Result::CannotWrite,
            QCoreApplication::translate("PL_FileSlot", "The new file cannot be put in the place of the old one.") };
    if (state == Unread)
        state = isThere(present) ? Rescued : Good;
    if (isFirstTime(target))
        removeStaleNewFiles(target);
    bool const isSynced = syncFolderOf(target);
    known = PL_FileVersion::of(target);
    if (!isSynced)
        return { Result::CannotWrite,
            QCoreApplication::translate("PL_FileSlot", "The new file cannot be put in the place of the old one."),
            true };
    return { Result::Done, {}, true };
}

bool PL_FileSlot::backUp(QString const &path)
{
    QString const target = targetOf(path);
    return !target.isEmpty() && backUpTarget(target, statusOf(target));
}

bool PL_FileSlot::restoreBackup(QString const &path, bool isKept)
{
    QString const target = targetOf(path);
    if (target.isEmpty())
        return false;
    if (isKept && !keepDamaged(target))
        return false;
    QString const backup = backupOf(target);
    bool const isRestored = QFileInfo(backup).isFile() && replaceByCopyOrLink(backup, target, target);
    if (isRestored)
        (void)syncFolderOf(target); // the backup is there all the same
    return isRestored;
}

bool PL_FileSlot::keepDamaged(QString const &path)
{
    QString const target = targetOf(path);
    PL_InputFile const file = PL_InputFile::read(target);
    if (!file.error.isEmpty())
        return !isThere(statusOf(target));
    // Nothing to repair from: an empty file, or one that a damaged backup was copied to.
    if (file.bytes.isEmpty() || file.bytes == PL_InputFile::read(backupOf(target)).bytes)
        return true;
    return replaceByCopyOrLink(target, target + QLatin1String(".bad"), target);
}

bool PL_FileSlot::renameNewFile(QString const &newFile, QString const &target)
{
    if (target.isEmpty() || newFile.isEmpty())
        return false;
    if (!renameFile(newFile, target)) {
        removeFile(newFile);
        return false;
    }
    if (isFirstTime(target))
        removeStaleNewFiles(target);
    return syncFolderOf(target);
}

namespace {
// What this thread holds: its own turn is no other's.
thread_local QStringList heldTargets;
} // namespace

PL_FileLock::PL_FileLock(QString const &path, int milliseconds)
{
    QDeadlineTimer const deadline(milliseconds);
    for (;;) {
        m_target = PL_FileSlot::targetOf(path);
        m_isNested = heldTargets.contains(m_target);
        if (m_isNested)
            return;
        m_lockFile = native(m_target + QLatin1String(".lock"));
        m_isBusy = !m_target.isEmpty() && tryOnce() && !isHeld();
        if (isHeld())
            heldTargets.append(m_target);
        if (!m_isBusy || deadline.hasExpired())
            return;
        QThread::msleep(3);
    }
}

// Whether it is worth to try again, if it is not held then.
bool PL_FileLock::tryOnce()
{
    int const file = operations().open(m_lockFile, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK, 0666);
    if (file < 0)
        return errno == EINTR;
    bool const isLocked = operations().lock(file) == 0;
    bool const isLater = isLocked || errno == EWOULDBLOCK || errno == EINTR;
    if (!isLocked && (errno == ENOTSUP || errno == ENOSYS)) // nobody ever locks it
        (void)operations().remove(m_lockFile);
    // Whoever had it before may have removed the file, or a link may lead elsewhere by now.
    if (isLocked && isNameOf(m_lockFile, file))
        m_file = file;
    else
        operations().close(file);
    return isLater;
}

PL_FileLock::~PL_FileLock()
{
    if (m_file < 0)
        return;
    heldTargets.removeOne(m_target);
    (void)operations().remove(m_lockFile);
    operations().close(m_file);
}
