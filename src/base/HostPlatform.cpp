#include "HostPlatform.h"

#include "OSW_Lang.h"
#include "WHO_Features.h"
#include "WHO_Identity.h"
#include "oswRemapPath.h"
#include "whoami.h"

HostPlatform &HostPlatform::current()
{
    // Never destroyed: destructors of global objects may still report.
    static auto *const platform = new HostPlatform;
    return *platform;
}

// ---- The services that ask it

int OSW_Lang::languageID()
{
    return HostPlatform::current().languageID;
}

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

int WHO_Identity::mode()
{
    return HostPlatform::current().mode;
}

QString oswRemapPath::RemapPath2(QString const &path)
{
    auto const &remap = HostPlatform::current().remapPath;
    return remap ? remap(path) : path;
}

bool whoami::appIsPanovia()
{
    return HostPlatform::current().appIsPanovia;
}
