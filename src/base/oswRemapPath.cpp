#include "oswRemapPath.h"

#include "HostPlatform.h"

QString oswRemapPath::RemapPath2(QString const &path)
{
    auto const &remap = HostPlatform::current().remapPath;
    return remap ? remap(path) : path;
}
