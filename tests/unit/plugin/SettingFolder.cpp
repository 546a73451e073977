#include "SettingFolder.h"

#include <QDate>
#include <QDir>
#include <QFile>

#include "FakeHost.h"
#include "NetInfoSettingRules.h"

SettingFolder::SettingFolder()
{
    if (!QDir().mkpath(userFolder())
        || !QDir().mkpath(m_root.path() + QStringLiteral("/lib/plugins/NetInfoUIExPlugin")))
        qFatal("cannot make folders in %s", qPrintable(m_root.path()));
    fakeHost().userDataDirectory = userFolder() + QLatin1Char('/');
    fakeHost().libraryPath = m_root.path() + QStringLiteral("/lib");
    write(templateFile(), settingTemplate());
}

QString SettingFolder::rootPath() const
{
    return m_root.path();
}

QString SettingFolder::userFolder() const
{
    return m_root.path() + QStringLiteral("/user");
}

QString SettingFolder::userFile() const
{
    return userFolder() + QStringLiteral("/DataUsageLimit.ini");
}

QString SettingFolder::temporaryFile() const
{
    return userFolder() + QStringLiteral("/tempDataUsageLimit.ini");
}

QString SettingFolder::templateFile() const
{
    return m_root.path() + QStringLiteral("/lib/plugins/NetInfoUIExPlugin/DataUsageLimit.ini");
}

QStringList SettingFolder::userNames() const
{
    return QDir(userFolder())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                   QDir::Name);
}

void SettingFolder::write(const QString &path, const QByteArray &content) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray SettingFolder::content(const QString &path) const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

QByteArray SettingFolder::settingTemplate()
{
    const QByteArray whole = savedFile(QStringLiteral("t"));
    return whole.left(whole.indexOf("startdate="));
}

QByteArray SettingFolder::firstFile()
{
    return NetInfoRules::firstSettingFile(settingTemplate(), QDate::currentDate());
}

QList<QString> SettingFolder::values(const QString &prefix)
{
    QList<QString> list;
    for (int i = 0; i < NetInfoRules::kSettingCount; ++i)
        list.append(prefix + QString::number(i));
    return list;
}

QByteArray SettingFolder::savedFile(const QString &prefix)
{
    return NetInfoRules::settingFile(values(prefix));
}
