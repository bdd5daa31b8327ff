#ifndef PL_FILEUTIL_H
#define PL_FILEUTIL_H

#include "PL_FileSpec.h"

/*! Replaces a file F so that it, or its backup, is good at every moment.

    A new version is written to NewFileSpec(F) and flushed to the disk; then BackupFile(F) keeps the present F as "F~"
    and RenameNewFile(F) puts the new version in its place. Where F is a symbolic link, all of this happens beside the
    file that it names, and the link stays. */
class BRIVANT_BASE_EXPORT PL_FileUtil {
public:
    /*! The file to write in place of \a spec: "F.new-" and six random letters or digits, so that two processes never
        write into one; the same until RenameNewFile(). Hold flock() on it from the moment that it is there: without,
       the first save of another process takes it for a stale one. For a symlink loop it is \a spec itself, which cannot
       be opened. */
    [[nodiscard]] static PL_FileSpec NewFileSpec(PL_FileSpec const &spec);
    /*! The backup of \a spec, "F~". */
    [[nodiscard]] static PL_FileSpec BackupFileSpec(PL_FileSpec const &spec);
    /*! Makes the present file the backup, without a moment in which either is missing; true also when there is no
        file yet. */
    static bool BackupFile(PL_FileSpec const &spec);
    /*! Puts the new file in the place of \a spec and syncs the folder; false when either fails. A new file that could
        not be put there is removed. The first time in a process, removes stale new files of dead processes. */
    static bool RenameNewFile(PL_FileSpec const &spec);
    /*! Replaces the file by a copy of its backup; false when there is none. With \a keepDamaged the replaced file is
        first kept as "F.bad", for repair; an empty one, or one that is no other than the backup, does not displace
        what is there. */
    static bool RestoreBackupFile(PL_FileSpec const &spec, bool keepDamaged);
};

#endif
