#include "HostPaths.h"

#include "HostPaths_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>

namespace HostPaths {

Overrides &overrides()
{
    static Overrides instance;
    return instance;
}

QString bare(const QString &path)
{
    QString result = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    while (result.endsWith(QLatin1Char('/')))
        result.chop(1);
    return result;
}

void setLibraryPath(const QString &path)
{
    overrides().libraryPath = path.isEmpty() ? QString() : bare(path);
}

void setUserDataDirectory(const QString &path)
{
    overrides().userDataDirectory = path.isEmpty() ? QString() : bare(path) + QLatin1Char('/');
}

QString languageDirectory()
{
    return bare(QCoreApplication::applicationDirPath() + QLatin1String("/" NETINFO_BIN_TO_LANG));
}

bool makePrivateDirectory(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return true;
    const QString clean = bare(path);
    const QString above = QFileInfo(clean).path();
    if (above == clean || !makePrivateDirectory(above))
        return false;
    return ::mkdir(QFile::encodeName(clean).constData(), S_IRWXU) == 0
        || (errno == EEXIST && QFileInfo(clean).isDir());
}

} // namespace HostPaths
