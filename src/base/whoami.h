#ifndef WHOAMI_H
#define WHOAMI_H

#include "brivantbase_export.h"

/*! Which product is running. */
namespace whoami {
/*! HostPlatform::appIsPanovia. */
[[nodiscard]] BRIVANT_BASE_EXPORT bool appIsPanovia();
} // namespace whoami

#endif
