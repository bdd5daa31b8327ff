#ifndef PR_XMLFILE_P_H
#define PR_XMLFILE_P_H

#include <QDomDocument>
#include <QString>

/*! An XML file, read whole. */
struct PR_XmlFile {
    enum State { Read, CannotOpen, NotXml };

    /*! Reads the file; says what went wrong in the state and the error. */
    static PR_XmlFile read(QString const &path);

    QString path;
    State state = CannotOpen;
    QDomDocument document; /*!< Null unless read. */
    QString error; /*!< In English. */
    int errorLine = 0; /*!< From 1; 0 when the error has no place. */
    int errorColumn = 0;
};

#endif
