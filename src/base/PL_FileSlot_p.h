#ifndef PL_FILESLOT_P_H
#define PL_FILESLOT_P_H

#include "PL_InputFile_p.h"

#include <functional>

/*! A file F that is replaced as a whole, with what stands beside it: the backup F~, the new file F.new-XXXXXX while it
   is written, F.bad, the last one that was damaged, and F.kept, one that a run could not read. A symbolic link F stays:
   what it leads to is replaced, and the others stand beside that. */
class BRIVANT_BASE_EXPORT PL_FileSlot {
public:
    /*! What the last load knew of the file. */
    enum State : quint8 {
        Good, /*!< It was read, or there was none: each file that is replaced becomes the backup. */
        Unread, /*!< It could not be read: the first one that is replaced becomes the backup and is kept besides. */
        Rescued /*!< That was done: the backup stays the user's file, unless that is F.kept and others wrote F. */
    };
    struct Result {
        enum Step { Done, CannotOpen, CannotWrite, Changed };

        Step step = Done;
        QString reason = {}; /*!< To show. */
        bool isInPlace = false; /*!< The new file is the file now, though the disk may lose that when not Done. */
    };
    /*! Whether the file at a path is damaged, so that it must not become the backup. */
    using IsDamaged = std::function<bool(QString const &path)>;

    /*! Where the links of a path lead to, also when nothing is there; empty for a symlink loop. */
    static QString targetOf(QString path);
    static QString backupOf(QString const &target) { return target + QLatin1Char('~'); }
    static QString keptOf(QString const &target) { return target + QLatin1String(".kept"); }

    /*! Puts bytes in the place of the file, on the disk when it returns: at any moment there is the old file or the new
        one. When \a expected is given and the file has another version right before it would go, nothing is replaced:
        Changed. */
    Result replace(QString const &path, QByteArray const &bytes, IsDamaged const &isDamaged,
        PL_FileVersion const *expected = nullptr);

    /*! \name Steps of it, on what a path leads to
        True when done. */
    /*!\{*/
    static bool backUp(QString const &path);
    /*! With \a isKept the file that is replaced is kept as F.bad. */
    static bool restoreBackup(QString const &path, bool isKept);
    static bool keepDamaged(QString const &path);
    static QString newFileOf(QString const &target); /*!< A name that nothing has. */
    static bool renameNewFile(QString const &newFile, QString const &target);
    /*!\}*/

    State state = Good;
    bool isKept = false; /*!< Whether F.kept is the file that could not be read. */
    unsigned int modeOfNewFile = 0600; /*!< Of a file where there was none; its permission bits. */
    PL_FileVersion known; /*!< The file when it was last known to be good. */
};

/*! The turn to read, merge and replace a file, among the threads, stores and programs that ask for it. The death of a
    process gives it back. */
class BRIVANT_BASE_EXPORT PL_FileLock {
public:
    /*! Waits at most \a milliseconds for the turn. */
    PL_FileLock(QString const &path, int milliseconds);
    ~PL_FileLock();

    /*! False when others had the turn for too long, and where nothing can be locked. */
    bool isHeld() const { return m_file >= 0 || m_isNested; }
    /*! Whether others had it all the time. */
    bool isBusy() const { return m_isBusy; }
    /*! Where the links of the path lead to. */
    QString const &target() const { return m_target; }

private:
    Q_DISABLE_COPY_MOVE(PL_FileLock)

    bool tryOnce();

    QString m_target;
    QByteArray m_lockFile;
    int m_file = -1;
    bool m_isNested = false; // in a turn of the same thread
    bool m_isBusy = false;
};

#endif
