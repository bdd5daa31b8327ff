#ifndef PL_FOLDER_P_H
#define PL_FOLDER_P_H

#include "brivantbase_export.h"

#include <QString>

/*! A folder that is held open, so that what is done in it is done there, wherever its path leads to by then. */
class BRIVANT_BASE_EXPORT PL_Folder {
public:
    /*! The folder that a path leads to. */
    explicit PL_Folder(QString const &path);
    /*! A folder in another one; not open when the name is that of a link. */
    PL_Folder(PL_Folder const &parent, QString const &name);
    ~PL_Folder();

    bool isOpen() const { return m_file >= 0; }
    bool isSame(PL_Folder const &other) const;
    bool isOrLiesBelow(PL_Folder const &other) const;
    /*! Removes a file, a link (not what it leads to) or a folder with all that it holds, but nothing of another file
        system; true when nothing of that name is left. */
    bool remove(QString const &name) const;

private:
    Q_DISABLE_COPY_MOVE(PL_Folder)

    int m_file;
};

#endif
