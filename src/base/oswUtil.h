#ifndef OSWUTIL_H
#define OSWUTIL_H

#include "brivantbase_export.h"

#include <QString>

/*! Facts about the installation. */
namespace oswUtil {
/*! The installation folder, the one that holds "resources"; the argument is not used. */
[[nodiscard]] BRIVANT_BASE_EXPORT QString ZeltDir(bool native);
} // namespace oswUtil

#endif
