#include "WHO_Identity.h"

#include "HostPlatform.h"

int WHO_Identity::mode()
{
    return HostPlatform::current().mode;
}
