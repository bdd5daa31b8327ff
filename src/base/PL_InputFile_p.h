#ifndef PL_INPUTFILE_P_H
#define PL_INPUTFILE_P_H

#include "brivantbase_export.h"

#include <QByteArray>
#include <QString>

struct stat;

/*! What tells one version of a file from another without reading it. */
struct BRIVANT_BASE_EXPORT PL_FileVersion {
    /*! The version of the file at a path; that of no file when there is none. */
    static PL_FileVersion of(QString const &path);
    /*! The version of a status; that of no file when it has no names. */
    static PL_FileVersion of(struct stat const &status);
    bool operator==(PL_FileVersion const &other) const;

    qint64 device = 0;
    qint64 inode = 0;
    qint64 size = -1; /*!< Bytes; -1 for no file at all. */
    qint64 modified = 0; /*!< Nanoseconds. */
    qint64 changed = 0; /*!< Nanoseconds, of the last change of the inode. */
};

/*! A file, read whole. It is opened once and looked at through that: what is no regular file, or larger than any file
   of preferences, is not read. */
struct BRIVANT_BASE_EXPORT PL_InputFile {
    static constexpr qint64 MaximumSize = 256 << 20;

    static PL_InputFile read(QString const &path, qint64 maximumSize = MaximumSize);

    QString error; /*!< Why it cannot be read, to show; empty when it was. */
    QByteArray bytes;
    PL_FileVersion version; /*!< Of what was read. */
};

#endif
