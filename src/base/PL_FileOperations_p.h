#ifndef PL_FILEOPERATIONS_P_H
#define PL_FILEOPERATIONS_P_H

#include "brivantbase_export.h"

#include <QByteArray>

#include <sys/stat.h>

/*! The system's operations on files, as saving uses them, with their meanings and errno. A test puts others in their
    place, which refuse a call, cut it short or act as if the process had ended there. */
class BRIVANT_BASE_EXPORT PL_FileOperations {
public:
    /*! Puts operations in the place of the system's as long as it lives. */
    class BRIVANT_BASE_EXPORT Replacement {
    public:
        explicit Replacement(PL_FileOperations &operations);
        ~Replacement();

    private:
        Q_DISABLE_COPY_MOVE(Replacement)
        PL_FileOperations *m_before;
    };

    static PL_FileOperations &current();

    virtual ~PL_FileOperations();
    virtual int open(QByteArray const &path, int flags, mode_t mode = 0);
    virtual ssize_t write(int file, char const *bytes, size_t size);
    virtual int sync(int file);
    virtual int close(int file);
    virtual int setMode(int file, mode_t mode);
    virtual int setOwner(int file, uid_t user, gid_t group);
    /*! For this descriptor alone, without waiting. */
    virtual int lock(int file);
    virtual int status(int file, struct stat &status);
    virtual int status(QByteArray const &path, struct stat &status); /*!< Of a link itself. */
    virtual int link(QByteArray const &file, QByteArray const &name);
    virtual int rename(QByteArray const &file, QByteArray const &name);
    virtual int remove(QByteArray const &file);
};

#endif
