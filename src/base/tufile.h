#ifndef TUFILE_H
#define TUFILE_H

#include "brivantbase_export.h"

#include <QString>

class MSG_Text;

/*! Helpers for files and folders. */
namespace tufile {
/*! True when something stands at \a path, a folder included; a link that leads nowhere does not count, nor does a name
    or path that is too long to exist. Where it cannot be known (a symlink loop, a folder without access, a disk error)
    the answer is true: nothing may be overwritten unread. */
[[nodiscard]] BRIVANT_BASE_EXPORT bool fileExists(QString const &path);

/*! Makes sure that the folder of the file \a path exists; with \a create, missing folders are made. On failure
    gives false and fills \a error with the reason. */
BRIVANT_BASE_EXPORT bool checkCreatePath(QString const &path, MSG_Text &error, bool create);

/*! Removes the file, the link (not what it points to) or the folder with all that it holds; true when nothing is
    left at \a path. */
BRIVANT_BASE_EXPORT bool rmIfExists(QString const &path);
} // namespace tufile

#endif
