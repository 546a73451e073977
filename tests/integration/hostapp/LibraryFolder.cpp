#include "LibraryFolder.h"

#include <QDir>
#include <QFile>

static QString fileOf(const QString &module)
{
    return QStringLiteral(NETINFO_TEST_MODULES "/%1.so").arg(module);
}

QString LibraryFolder::path() const
{
    return m_root.path();
}

void LibraryFolder::makePlugins()
{
    if (!QDir(m_root.path()).mkpath(QStringLiteral("plugins")))
        qFatal("no folder");
}

QString LibraryFolder::makeFolder(const QString &name)
{
    const QString folder = m_root.filePath(QStringLiteral("plugins/") + name);
    if (!QDir().mkpath(folder))
        qFatal("no folder");
    return folder;
}

QString LibraryFolder::addModule(const QString &folder, const QString &module)
{
    const QString file = makeFolder(folder) + QLatin1Char('/') + module + QLatin1String(".so");
    if (!QFile::copy(fileOf(module), file))
        qFatal("no module");
    return file;
}

QString LibraryFolder::addFile(const QString &folder, const QString &name,
                               const QByteArray &content)
{
    QFile file(makeFolder(folder) + QLatin1Char('/') + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no file");
    return file.fileName();
}

QByteArray LibraryFolder::contentOf(const QString &module)
{
    QFile file(fileOf(module));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no module");
    return file.readAll();
}

QByteArray LibraryFolder::contentOfNextQt(const QString &module)
{
    QByteArray content = contentOf(module);
    const QByteArray version(1, char(QT_VERSION_MAJOR));
    const QByteArray next(1, char(QT_VERSION_MAJOR + 1));
    // The mark that Qt leaves in a plug-in, with the NUL and the format's version behind it.
    for (const QByteArray &mark :
         { QByteArray("qt-project!\0\1", 13), QByteArray("QTMETADATA !\0", 13) })
        content.replace(mark + version, mark + next);
    return content;
}
