#ifndef OSWREMAPPATH_H
#define OSWREMAPPATH_H

#include "brivantbase_export.h"

#include <QString>

/*! Translation of stored paths to those of this machine. */
namespace oswRemapPath {
/*! The path to use for file access in place of \a path (HostPlatform::remapPath). */
[[nodiscard]] BRIVANT_BASE_EXPORT QString RemapPath2(QString const &path);
} // namespace oswRemapPath

#endif
