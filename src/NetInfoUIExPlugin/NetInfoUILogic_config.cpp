#include "NetInfoUILogic.h"

#include "NetInfoConfigParse.h"
#include "NetInfoConfigRules.h"
#include "NetInfoLog.h"
#include "NetInfoTextRules.h"

namespace {

constexpr char kSource[] = "../../src/NetInfoUIExPlugin/NetInfoUILogic.cpp";

constexpr int kNoCustomizeName = 1;
constexpr int kOutOfMemory = 13;

} // namespace

int NetInfoUILogic::getConfigData()
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    int result = kOutOfMemory;
    if (m_pConfigParse) {
        QString group = QLatin1String("customize");
        QString module = QLatin1String("common");
        result = m_pConfigParse->GetSettingsFromXML(group, module, m_configData);

        NETINFO_TRACE("========> %s: %s: %s: VELQ_DevSrv_GetCustomizeName called", kSource);
        char buffer[VELQ_CUSTOMIZE_NAME_SIZE + 1] = {}; // one more: always terminated
        if (VELQ_DevSrv_GetCustomizeName(buffer) != 0) {
            NETINFO_TRACE("<======== %s: %s: %s: VELQ_DevSrv_GetCustomizeName failed", kSource);
            result = kNoCustomizeName;
        } else {
            NETINFO_TRACE("<======== %s: %s: %s: VELQ_DevSrv_GetCustomizeName success", kSource);
            QString name = QString::fromUtf8(buffer);
            if (!name.isEmpty() && name != module)
                result = m_pConfigParse->GetSettingsFromXML(group, name, m_customizeConfig);
        }
        m_configData += m_customizeConfig;
        eraseCommonConfig(QLatin1String("speedunit"), m_configData, m_customizeConfig);
        eraseCommonConfig(QLatin1String("fluxunit"), m_configData, m_customizeConfig);
    }
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
    return result;
}

void NetInfoUILogic::eraseCommonConfig(QString section, QVector<NetInfoConfig> &configData,
                                       QVector<NetInfoConfig> custom)
{
    NetInfoRules::replaceSection(section, configData, custom);
}

bool NetInfoUILogic::IsFunctionEnable(QString name)
{
    return NetInfoRules::isFunctionEnabled(m_configData, name);
}

void NetInfoUILogic::GetFluxUnitData(QVector<TagUnits> &units)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    NetInfoRules::appendUnits(m_configData, QLatin1String("fluxunit"), units);
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
}

void NetInfoUILogic::GetSpeedUnitData(QVector<TagUnits> &units)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    NetInfoRules::appendUnits(m_configData, QLatin1String("speedunit"), units);
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
}

NetInfoRules::LimitWarning NetInfoUILogic::GetLimitWarning(QString name) const
{
    if (!m_pConfigParse)
        return NetInfoRules::LimitWarning();
    return NetInfoRules::limitWarning(m_pConfigParse->m_limitCfgs, name);
}

QColor NetInfoUILogic::GetProgressColor(QString name) const
{
    if (m_configData.isEmpty() || !m_pConfigParse)
        return QColor(255, 255, 255, 0);
    QColor colour;
    for (const NetInfoProgressColor &entry : m_pConfigParse->m_progressColors) {
        if (entry.name == name)
            colour = entry.color;
    }
    return colour;
}

int NetInfoUILogic::convertTimeToString(long long seconds, QString &text)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    text += NetInfoRules::durationText(seconds);
    return 0;
}
