#include "WHO_Features.h"

#include "HostPlatform.h"

QStringList WHO_Features::keywords(bool)
{
    return HostPlatform::current().featureKeywords;
}

bool WHO_Features::hasMorphing()
{
    return HostPlatform::current().hasMorphing;
}

bool WHO_Features::hasPanoviaPreferenceUI()
{
    return HostPlatform::current().hasPanoviaPreferenceUI;
}
