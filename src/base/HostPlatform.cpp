#include "HostPlatform.h"

HostPlatform &HostPlatform::current()
{
    // Never destroyed: destructors of global objects may still report.
    static auto *const platform = new HostPlatform;
    return *platform;
}
