#ifndef FAULTYFILES_H
#define FAULTYFILES_H

#include "PL_FileOperations_p.h"

#include <cerrno>

/*! File operations of which one call goes wrong. */
class FaultyFiles final : public PL_FileOperations {
public:
    enum Kind {
        Refused, /*!< The call fails, with an error number. */
        CutShort, /*!< A write writes a half, and fails then. */
        Ended /*!< As if the process had ended before the call: this and all later ones do nothing. */
    };

    /*! The call at a position, from 0, goes wrong; a negative one is none. */
    explicit FaultyFiles(int position = -1, Kind kind = Refused, int error = EIO)
        : m_position(position)
        , m_kind(kind)
        , m_error(error)
    {
    }

    int calls = 0;
    bool hasHappened = false;
    bool hasLinks = true; /*!< Whether the file system has hard links. */

    int open(QByteArray const &path, int flags, mode_t mode) override
    {
        return goes() ? PL_FileOperations::open(path, flags, mode) : -1;
    }
    ssize_t write(int file, char const *bytes, size_t size) override
    {
        if (calls == m_position && m_kind == CutShort && size > 1) {
            hasHappened = true;
            ++m_position; // so that the next one fails
            ++calls;
            return PL_FileOperations::write(file, bytes, size / 2);
        }
        return goes() ? PL_FileOperations::write(file, bytes, size) : -1;
    }
    int sync(int file) override { return goes() ? PL_FileOperations::sync(file) : -1; }
    int close(int file) override { return PL_FileOperations::close(file); } // the end of a process closes too
    int setMode(int file, mode_t mode) override { return goes() ? PL_FileOperations::setMode(file, mode) : -1; }
    int setOwner(int file, uid_t user, gid_t group) override
    {
        return goes() ? PL_FileOperations::setOwner(file, user, group) : -1;
    }
    int lock(int file) override { return goes() ? PL_FileOperations::lock(file) : -1; }
    int status(int file, struct stat &status) override { return goes() ? PL_FileOperations::status(file, status) : -1; }
    int status(QByteArray const &path, struct stat &status) override
    {
        return goes() ? PL_FileOperations::status(path, status) : -1;
    }
    int link(QByteArray const &file, QByteArray const &name) override
    {
        errno = EPERM;
        return goes() && hasLinks ? PL_FileOperations::link(file, name) : -1;
    }
    int rename(QByteArray const &file, QByteArray const &name) override
    {
        return goes() ? PL_FileOperations::rename(file, name) : -1;
    }
    int remove(QByteArray const &file) override { return goes() ? PL_FileOperations::remove(file) : -1; }

private:
    bool goes()
    {
        bool const isIt = calls++ == m_position || (m_kind == Ended && hasHappened);
        hasHappened = hasHappened || isIt;
        if (isIt)
            errno = m_error;
        return !isIt;
    }

    int m_position;
    Kind m_kind;
    int m_error;
    Replacement m_replacement{ *this };
};

#endif
