#include "whoami.h"

#include "HostPlatform.h"

bool whoami::appIsPanovia()
{
    return HostPlatform::current().appIsPanovia;
}
