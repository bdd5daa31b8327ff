#include "PL_FileSpec.h"

#include "HostPlatform.h"

#include <QFileInfo>
#include <QStandardPaths>

PL_FileSpec::PL_FileSpec(UT_String const &path)
    : m_path(path)
{
}

void PL_FileSpec::IFileSpec(SpecialFolderType folder)
{
    auto const &hostFolders = HostPlatform::current().specialFolders;
    auto const hostFolder = hostFolders.constFind(folder);
    if (hostFolder != hostFolders.cend()) {
        m_path = UT_String(*hostFolder);
        return;
    }
    m_path = UT_String(
        QStandardPaths::writableLocation(folder == DefaultLocalCacheFolder ? QStandardPaths::GenericCacheLocation
                                                                           : QStandardPaths::GenericConfigLocation));
}

bool PL_FileSpec::IsFolder() const
{
    return QFileInfo(m_path.ToQString()).isDir();
}
