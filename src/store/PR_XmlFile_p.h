#ifndef PR_XMLFILE_P_H
#define PR_XMLFILE_P_H

#include <QDateTime>
#include <QDomDocument>
#include <QString>

/*! What tells one version of a file from another without reading it. */
struct PR_FileState {
    static PR_FileState of(QString const &path);
    bool operator==(PR_FileState const &other) const { return modified == other.modified && size == other.size; }

    QDateTime modified;
    qint64 size = -1; /*!< Bytes; -1 for no file at all. */
};

/*! An XML file, read whole. */
struct PR_XmlFile {
    enum State { Read, CannotOpen, NotXml };

    /*! Reads the file; says what went wrong in the state and the error. */
    static PR_XmlFile read(QString const &path);

    QString path;
    PR_FileState version; /*!< Of the file when it was opened. */
    State state = CannotOpen;
    QDomDocument document; /*!< Null unless read. */
    QString error; /*!< In English. */
    int errorLine = 0; /*!< From 1; 0 when the error has no place. */
    int errorColumn = 0;
};

#endif
