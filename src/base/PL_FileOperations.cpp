#include "PL_FileOperations_p.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <utility>

namespace {
PL_FileOperations *&current()
{
    static PL_FileOperations system;
    static PL_FileOperations *operations = &system;
    return operations;
}
} // namespace

PL_FileOperations::Replacement::Replacement(PL_FileOperations &operations)
    : m_before(std::exchange(::current(), &operations))
{
}

PL_FileOperations::Replacement::~Replacement()
{
    ::current() = m_before;
}

PL_FileOperations &PL_FileOperations::current()
{
    return *::current();
}

PL_FileOperations::~PL_FileOperations() = default;

int PL_FileOperations::open(QByteArray const &path, int flags, mode_t mode)
{
    return ::open(path.constData(), flags | O_CLOEXEC, mode);
}

ssize_t PL_FileOperations::write(int file, char const *bytes, size_t size)
{
    return ::write(file, bytes, size);
}

int PL_FileOperations::sync(int file)
{
    return ::fsync(file);
}

int PL_FileOperations::close(int file)
{
    return ::close(file);
}

int PL_FileOperations::setMode(int file, mode_t mode)
{
    return ::fchmod(file, mode);
}

int PL_FileOperations::setOwner(int file, uid_t user, gid_t group)
{
    return ::fchown(file, user, group);
}

int PL_FileOperations::lock(int file)
{
    return ::flock(file, LOCK_EX | LOCK_NB);
}

int PL_FileOperations::status(int file, struct stat &status)
{
    return ::fstat(file, &status);
}

int PL_FileOperations::status(QByteArray const &path, struct stat &status)
{
    return ::lstat(path.constData(), &status);
}

int PL_FileOperations::link(QByteArray const &file, QByteArray const &name)
{
    return ::link(file.constData(), name.constData());
}

int PL_FileOperations::rename(QByteArray const &file, QByteArray const &name)
{
    return std::rename(file.constData(), name.constData());
}

int PL_FileOperations::remove(QByteArray const &file)
{
    return ::unlink(file.constData());
}
