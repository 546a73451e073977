#include "HostPaths.h"
#include "HostPaths_p.h"

#include <host/CommonUtils.h>

#include <QCoreApplication>
#include <QStandardPaths>

QString CommonUtils::GetPluginLibraryPath()
{
    const QString chosen = HostPaths::overrides().libraryPath;
    if (!chosen.isEmpty())
        return chosen;
    const QString environment = qEnvironmentVariable("SKYLET_LIBRARY_PATH");
    if (!environment.isEmpty())
        return HostPaths::bare(environment);
    return HostPaths::bare(QCoreApplication::applicationDirPath()
                           + QLatin1String("/" NETINFO_BIN_TO_LIBRARY_PATH));
}

QString CommonUtils::getUserDataDirectory()
{
    QString folder = HostPaths::overrides().userDataDirectory;
    if (folder.isEmpty()) {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        if (data.isEmpty())
            return QString();
        folder = HostPaths::bare(data) + QLatin1String("/skylet/");
    }
    return HostPaths::makePrivateDirectory(folder) ? folder : QString();
}
