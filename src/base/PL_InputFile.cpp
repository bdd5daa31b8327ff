#include "PL_InputFile_p.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
/*! Closes a descriptor at its end. */
class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor()
    {
        if (m_number >= 0)
            close(m_number);
    }
    Q_DISABLE_COPY_MOVE(Descriptor)
    operator int() const { return m_number; }

private:
    int m_number;
};
} // namespace

bool PL_FileVersion::operator==(PL_FileVersion const &other) const
{
    return device == other.device && inode == other.inode && size == other.size && modified == other.modified
        && changed == other.changed;
}

PL_FileVersion PL_FileVersion::of(QString const &path)
{
    struct stat info = {};
    bool const isThere = !path.contains(QChar::Null) && stat(QFile::encodeName(path).constData(), &info) == 0;
    return isThere ? of(info) : PL_FileVersion();
}

PL_FileVersion PL_FileVersion::of(struct stat const &status)
{
    auto const nanoseconds = [](timespec const &time) { return qint64(time.tv_sec) * 1000000000 + time.tv_nsec; };
    if (status.st_nlink == 0)
        return {};
    return { qint64(status.st_dev), qint64(status.st_ino), status.st_size, nanoseconds(status.st_mtim),
        nanoseconds(status.st_ctim) };
}

PL_InputFile PL_InputFile::read(QString const &path, qint64 maximumSize)
{
    PL_InputFile result;
    auto const failed = [&result](QString const &error) {
        result.bytes.clear();
        result.error = error;
        return result;
    };
    if (path.contains(QChar::Null))
        return failed(qt_error_string(ENOENT));
    // A pipe must not wait for somebody who writes.
    Descriptor const file(open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat info = {};
    if (file < 0 || fstat(file, &info) != 0)
        return failed(qt_error_string(errno));
    if (!S_ISREG(info.st_mode))
        return failed(QCoreApplication::translate("PL_InputFile", "is not a regular file"));
    auto const tooLarge = [maximumSize] {
        return QCoreApplication::translate("PL_InputFile", "is larger than %1 MB").arg(maximumSize >> 20);
    };
    if (info.st_size > maximumSize)
        return failed(tooLarge());

    // Some files of the kernel have no size that holds: the end is where nothing is left.
    result.bytes.resize(info.st_size + 1);
    qsizetype size = 0;
    for (;;) {
        if (size == result.bytes.size())
            result.bytes.resize(2 * size);
        ssize_t const count = ::read(file, result.bytes.data() + size, size_t(result.bytes.size() - size));
        if (count < 0 && errno != EINTR)
            return failed(qt_error_string(errno));
        if (count == 0)
            break;
        size += qMax<ssize_t>(count, 0);
        if (size > maximumSize)
            return failed(tooLarge());
    }
    result.bytes.resize(size);
    result.version = PL_FileVersion::of(info);
    return result;
}
