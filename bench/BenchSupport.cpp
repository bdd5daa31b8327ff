#include "BenchSupport.h"

#include "HostPlatform.h"

#include <QFileInfo>

BenchStore::BenchStore()
{
    HostPlatform &host = HostPlatform::current();
    host.installFolder = QFileInfo(QStringLiteral(BRIVANT_RESOURCES)).path();
    host.hasMorphing = true;
    host.fonts = QStringList{ QStringLiteral("Arial"), QStringLiteral("Courier"), QStringLiteral("Times") };
    host.report = [](HostReport const &) {}; // that there is no user file yet
    m_store.reset(PR_Preference::createPreference(m_folder.filePath(QStringLiteral("user.pref"))));
}
