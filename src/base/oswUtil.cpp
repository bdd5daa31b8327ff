#include "oswUtil.h"

#include "HostPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <dlfcn.h>
#endif

namespace {
char const placeInLibrary = 0;

// The folder of this library's own file: an installation may lie anywhere.
QString libraryFolder()
{
#ifdef Q_OS_UNIX
    Dl_info info;
    if (dladdr(&placeInLibrary, &info) && info.dli_fname)
        return QFileInfo(QFile::decodeName(info.dli_fname)).canonicalPath();
#endif
    return QCoreApplication::applicationDirPath();
}
} // namespace

QString oswUtil::ZeltDir(bool)
{
    QString const &hostFolder = HostPlatform::current().installFolder;
    if (!hostFolder.isEmpty())
        return hostFolder;
    static QString const shippedFolder =
        QDir::cleanPath(libraryFolder() + QLatin1Char('/') + QLatin1String(BRIVANT_RESOURCES_FROM_LIBRARY));
    return shippedFolder;
}
