#include "HostPlatform.h"

HostPlatform &HostPlatform::current()
{
    static HostPlatform platform;
    return platform;
}
