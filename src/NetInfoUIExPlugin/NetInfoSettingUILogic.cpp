#include "NetInfoSettingUILogic.h"

#include <host/CommonUtils.h>

#include <QDate>
#include <QFile>

#include <new>

#include "NetInfoLog.h"
#include "NetInfoSettingFile.h"
#include "NetInfoSettingRules.h"

namespace {

constexpr char kSource[] = "../../src/NetInfoUIExPlugin/NetInfoSettingUILogic.cpp";
constexpr char kStart[] = "Start: %s: %s: %s %d";
constexpr char kEnd[] = "End  : %s: %s: %s %d";
constexpr char kFileName[] = "DataUsageLimit.ini";
constexpr char kTemporaryName[] = "tempDataUsageLimit.ini";

//! A file of the user data folder; empty without one.
[[nodiscard]] QString userPath(const char *name)
{
    const QString folder = CommonUtils::getUserDataDirectory();
    return folder.isEmpty() ? QString() : folder + QLatin1String(name);
}

[[nodiscard]] QString templatePath()
{
    return CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/NetInfoUIExPlugin/")
        + QLatin1String(kFileName);
}

[[nodiscard]] bool readSettings(const QString &path, QByteArray &content)
{
    QByteArray bytes;
    if (!NetInfoFile::read(path, NetInfoRules::kSettingFileLimit + 1, bytes))
        return false;
    content = NetInfoRules::linesWithin(bytes, NetInfoRules::kSettingFileLimit);
    return true;
}

//! Whether replacing the file loses nothing but settings that were read.
[[nodiscard]] bool isReplaceable(const QString &path)
{
    QByteArray bytes;
    return NetInfoFile::isMissingOrEmpty(path)
        || (NetInfoFile::read(path, NetInfoRules::kSettingFileLimit + 1, bytes)
            && NetInfoRules::isSettingText(bytes, NetInfoRules::kSettingFileLimit));
}

void writeUserFile(const QByteArray &content)
{
    using NetInfoFile::Old;
    const QString path = userPath(kFileName);
    // A failure is silent: the file is as before.
    (void)NetInfoFile::replace(path, userPath(kTemporaryName), content,
                               isReplaceable(path) ? Old::Drop : Old::Keep);
}

[[nodiscard]] QString makeUserFile()
{
    QString path = userPath(kFileName);
    if (path.isEmpty() || !NetInfoFile::isMissingOrEmpty(path))
        return path;
    if (!QFile::exists(templatePath()))
        return QString();
    QByteArray content; // without a readable template an empty file, which counts as missing
    if (readSettings(templatePath(), content))
        content = NetInfoRules::firstSettingFile(content, QDate::currentDate());
    writeUserFile(content);
    return path;
}

} // namespace

NetInfoSettingUILogic *NetInfoSettingUILogic::m_pInstance = nullptr;

NetInfoSettingUILogic *NetInfoSettingUILogic::GetInstance()
{
    if (!m_pInstance)
        m_pInstance = new (std::nothrow) NetInfoSettingUILogic;
    return m_pInstance;
}

void NetInfoSettingUILogic::Destroy()
{
    delete m_pInstance; // the pointer stays
}

NetInfoSettingUILogic::NetInfoSettingUILogic() = default;

NetInfoSettingUILogic::~NetInfoSettingUILogic() = default;

void NetInfoSettingUILogic::GetUseLimitSetting()
{
    NETINFO_TRACE_LINE(kStart, kSource);
    const QString path = userPath(kFileName);
    if (!path.isEmpty()) {
        if (NetInfoFile::isMissingOrEmpty(path))
            (void)GetConfigFilePath();
        QByteArray content;
        const bool isUserFile = readSettings(path, content);
        if (isUserFile || readSettings(templatePath(), content))
            m_settings += NetInfoRules::settingValues(content);
        if (!isUserFile)
            m_settings << QString() << QString() << QString(); // no template has the period's start
    }
    NETINFO_TRACE_LINE(kEnd, kSource);
}

QString NetInfoSettingUILogic::GetConfigFilePath()
{
    NETINFO_TRACE_LINE(kStart, kSource);
    QString path = makeUserFile();
    NETINFO_TRACE_LINE(kEnd, kSource);
    return path;
}

void NetInfoSettingUILogic::updateUseLimitSetting(int index, QString value)
{
    NETINFO_TRACE_LINE(kStart, kSource);
    if (index >= 0 && index < NetInfoRules::kSettingCount) {
        while (m_settings.size() < NetInfoRules::kSettingCount)
            m_settings.append(QString());
        m_settings[index] = value;
    }
    NETINFO_TRACE_LINE(kEnd, kSource);
}

bool NetInfoSettingUILogic::saveUseLimitSetting()
{
    NETINFO_TRACE_LINE(kStart, kSource);
    const QString path = userPath(kFileName);
    if (!path.isEmpty())
        writeUserFile(NetInfoRules::settingFile(m_settings));
    NETINFO_TRACE_LINE(kEnd, kSource);
    return !path.isEmpty();
}

QString NetInfoSettingUILogic::value(int index) const
{
    return m_settings.value(index);
}
