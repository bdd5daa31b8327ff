#include "OSW_Lang.h"

#include "HostPlatform.h"

int OSW_Lang::languageID()
{
    return HostPlatform::current().languageID;
}
