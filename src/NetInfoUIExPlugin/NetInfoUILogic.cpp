#include "NetInfoUILogic.h"

#include <QDateTime>

#include <new>

#include "NetInfoConfigParse.h"
#include "NetInfoLog.h"
#include "NetInfoReportRules.h"
#include "NetInfoTextRules.h"

namespace {

constexpr char kSource[] = "../../src/NetInfoUIExPlugin/NetInfoUILogic.cpp";

constexpr int kOutOfMemory = 13;
constexpr int kLiveReport = 0;
constexpr int kLastResetReport = 2;

//! Fetches report \a kind; 0 on success.
[[nodiscard]] int fetchReport(int kind, _VELQ_EN_CONNECT_TYPE type, NetInfoReport &report)
{
    unsigned char block[VELQ_STATISTICS_REPORT_SIZE] = {};
    const int result = VELQ_Statistics_GetReport(kind, block, type);
    if (result == 0)
        report = NetInfoRules::decodeReport(block);
    return result;
}

void copyFigures(const NetInfoReport &report, NetInfoData &out)
{
    out.ullUpData = report.uploadData;
    out.ullDownData = report.downloadData;
    out.llTime = report.connectionTime;
}

} // namespace

std::atomic<NetInfoUILogic *> NetInfoUILogic::m_pNetInfoInstance { nullptr };

NetInfoUILogic *NetInfoUILogic::Instance()
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    if (!m_pNetInfoInstance)
        m_pNetInfoInstance = new (std::nothrow) NetInfoUILogic;
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
    return m_pNetInfoInstance;
}

void NetInfoUILogic::Destroy()
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    // Cleared first: a callback that starts meanwhile finds no instance; the destructor waits for
    // one that already runs.
    delete m_pNetInfoInstance.exchange(nullptr);
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
}

NetInfoUILogic::NetInfoUILogic()
    : m_pConfigParse(nullptr)
    , m_connectType(VELQ_CONNECT_TYPE_DIALUP)
{
}

NetInfoUILogic::~NetInfoUILogic()
{
    UnregSDK();
    if (m_pConfigParse)
        NetInfoConfigParse::OnDestroy();
}

int NetInfoUILogic::Init()
{
    m_pConfigParse = NetInfoConfigParse::GetInstance();
    if (!m_pConfigParse) {
        qWarning("%s: %s: %s: Out of Memory", NETINFO_LOG_TIME, kSource, __func__);
        return kOutOfMemory;
    }
    NETINFO_TRACE("========> %s: %s: %s: VELQ_Statistics_RegisterStatisticsCallbackEvent called",
                  kSource);
    if (VELQ_Statistics_RegisterStatisticsCallbackEvent(&StatisticsEventCallBack) == 0) {
        NETINFO_TRACE(
            "<======== %s: %s: %s: VELQ_Statistics_RegisterStatisticsCallbackEvent Success",
            kSource);
    } else {
        NETINFO_TRACE(
            "<======== %s: %s: %s: VELQ_Statistics_RegisterStatisticsCallbackEvent Failed",
            kSource);
    }
    // The line stands alone: connection events are not registered.
    NETINFO_TRACE("<======== %s: %s: %s: VELQ_NetConnectSrv_RegisterNetConnectEvent called",
                  kSource);
    return getConfigData();
}

void NetInfoUILogic::OnDestroy() { }

int NetInfoUILogic::StatisticsEventCallBack(int event, void *data)
{
    NETINFO_DEBUG("%s: %s: %s: CBNotify-%d ", NETINFO_LOG_TIME, kSource, __func__, event);
    if (event != VELQ_EVENT_STATISTICS)
        return 1;
    NetInfoUILogic *const source = m_pNetInfoInstance;
    if (!data || !source)
        return 0;
    source->reportEvent(data);
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
    return 1;
}

void NetInfoUILogic::reportEvent(const void *data)
{
    const NetInfoNotice notice = NetInfoRules::decodeNotice(data);
    if (!notice.connected) {
        emit statisticsChanged(0, 0, 0, 0, QLatin1String("00:00:00"));
        return;
    }
    const auto type = _VELQ_EN_CONNECT_TYPE(notice.connectType);
    m_connectType = type;
    NetInfoReport report;
    if (fetchReport(kLiveReport, type, report) != 0)
        return;
    QString time;
    convertTimeToString(report.connectionTime, time);
    emit statisticsChanged(report.uploadSpeed, report.downloadSpeed, report.uploadData,
                           report.downloadData, time);
}

void NetInfoUILogic::UnregSDK()
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    VELQ_Statistics_UnRegisterStatisticsCallbackEvent(&StatisticsEventCallBack);
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
}

int NetInfoUILogic::GetStatistics(_enNetInfoType type, NetInfoData &out)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    NetInfoReport report;
    const int result = fetchReport(NetInfoRules::reportKind(type), m_connectType, report);
    if (result == 0)
        copyFigures(report, out);
    else
        NETINFO_TRACE("%s: %s: %s: VELQ_Statistics_GetReport Error", kSource);
    return result;
}

void NetInfoUILogic::GetHistrorySpecData(int key, NetInfoData &out)
{
    unsigned char block[VELQ_STATISTICS_REPORT_SIZE] = {};
    if (VELQ_Statistics_GetSpecHistroryData(block, NetInfoRules::historyKey(key)) == 0)
        copyFigures(NetInfoRules::decodeReport(block), out);
}

int NetInfoUILogic::ResetStatistics()
{
    if (VELQ_Statistics_Reset(m_connectType) == 0)
        return 0;
    // The line names the report function; it is kept so.
    NETINFO_TRACE("%s: %s: %s: VELQ_Statistics_GetReport Error", kSource);
    return 1;
}

bool NetInfoUILogic::GetLastResetTime(QString &out)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    NetInfoReport report;
    const bool failed = fetchReport(kLastResetReport, m_connectType, report) != 0;
    if (failed) {
        NETINFO_TRACE("%s: %s: %s: VELQ_Statistics_GetReport Error", kSource);
    } else {
        out = QLocale::system().toString(QtCompat::dateTimeFromSeconds(report.lastReset),
                                         QLocale::ShortFormat);
    }
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
    return failed;
}

void NetInfoUILogic::SetCurrerentConnectType(_VELQ_EN_CONNECT_TYPE type)
{
    m_connectType = type;
}

_VELQ_EN_CONNECT_TYPE NetInfoUILogic::GetConnectType() const
{
    return m_connectType;
}
