#ifndef PR_XMLFILE_P_H
#define PR_XMLFILE_P_H

#include <QDomDocument>
#include <QString>

#include <filesystem>

/*! What tells one version of a file from another without reading it. */
struct PR_FileState {
    static PR_FileState of(QString const &path);
    bool operator==(PR_FileState const &other) const { return modified == other.modified && size == other.size; }

    std::filesystem::file_time_type modified;
    qint64 size = -1; /*!< Bytes; -1 for no file at all. */
};

/*! An XML file, read whole; what went wrong is in the state and the error. */
struct PR_XmlFile {
    enum State {
        Read,
        CannotOpen,
        NotXml /*!< Also a file that no one would write and that would take a parser too long. */
    };

    /*! Reads the bytes, which are reasonable for a parser when the state is Read. */
    static PR_XmlFile read(QString const &path);
    /*! Reads the file into a document. */
    static PR_XmlFile readDocument(QString const &path);

    QString path;
    PR_FileState version; /*!< Of the file when it was opened. */
    State state = CannotOpen;
    QString error; /*!< To show, in the language of the host. */
    qint64 errorLine = 0; /*!< From 1; 0 when the error has no place. */
    qint64 errorColumn = 0;
    QByteArray bytes;
    qsizetype elementCount = 0;
    QDomDocument document;
};

#endif
