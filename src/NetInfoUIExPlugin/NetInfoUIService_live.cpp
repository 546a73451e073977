// Live figures, stored figures and their translation.
#include "NetInfoUIService.h"

#include <QDate>
#include <QMessageBox>
#include <QPointer>

#include <host/CommonUtils.h>

#include "NetInfoLog.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr char kSource[] = NETINFO_SERVICE_SOURCE;

constexpr int kAffirmative = 1024;

//! Rows of a stored period.
struct PeriodRows
{
    _enNetInfoType type;
    int upload;
    int download;
};

constexpr PeriodRows kPeriods[] = {
    { NET_INFO_DAILY, DailyUploadRow, DailyDownloadRow },
    { NET_INFO_MONTHLY, MonthlyUploadRow, MonthlyDownloadRow },
    { NET_INFO_YEARLY, YearlyUploadRow, YearlyDownloadRow },
};

//! The order in which the stored figures are fetched; the first failure ends it.
constexpr _enNetInfoType kFetchOrder[]
    = { NET_INFO_DAILY, NET_INFO_MONTHLY, NET_INFO_YEARLY, NET_INFO_WEEKLY };

//! The date three months before \a today as text, or empty where that month has no such day.
[[nodiscard]] QString threeMonthsBefore(const QDate &today)
{
    int year = today.year();
    int month = today.month() - 3;
    if (month < 1) {
        --year;
        month = today.month() + 9;
    }
    return QDate(year, month, today.day()).toString(QLatin1String("dd.MM.yyyy"));
}

} // namespace

void CNetInfoUIService::onStatisticsChanged(unsigned long upSpeed, unsigned long downSpeed,
                                            qulonglong upData, qulonglong downData, QString time)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    NETINFO_REQUIRE(m_tree->items[TransferNode] && m_page->source, return );
    writeRow(TransferNode, transferText(transferSuffix()));
    if (m_tree->items[UploadSpeedRow]) {
        m_live->upSpeed = upSpeed;
        writeRow(UploadSpeedRow, labelled(SpeedLabel, speedText(upSpeed)));
    }
    if (m_tree->items[UploadDataRow]) {
        m_live->upData = upData;
        writeRow(UploadDataRow, labelled(DataLabel, fluxText(upData)));
    }
    if (m_tree->items[DownloadSpeedRow]) {
        m_live->downSpeed = downSpeed;
        writeRow(DownloadSpeedRow, labelled(SpeedLabel, speedText(downSpeed)));
    }
    if (m_tree->items[DownloadDataRow]) {
        m_live->downData = downData;
        writeRow(DownloadDataRow, labelled(DataLabel, fluxText(downData)));
    }
    if (m_tree->items[TimeRow]) {
        m_live->time = time;
        writeRow(TimeRow, labelled(TimeLabel, time));
    }
    if (m_page->graph && isFunctionEnabled("SHOWGRAPH"))
        drawSpeeds(upSpeed, downSpeed);
    updateStoredStatistics();
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
}

void CNetInfoUIService::drawSpeeds(unsigned long upSpeed, unsigned long downSpeed)
{
    const double factor = m_tree->speedUnits.isEmpty() ? 0 : m_tree->speedUnits.at(0).value;
    if (factor == 0)
        m_page->graph->DrawGraph(0.0, 0.0);
    else
        m_page->graph->DrawGraph(double(upSpeed) / factor, double(downSpeed) / factor);
}

const char *CNetInfoUIService::transferSuffix() const
{
    const bool wlan = m_page->source && m_page->source->GetConnectType() == VELQ_CONNECT_TYPE_WLAN;
    return wlan ? "IDS_WLAN_TRANSFER" : "IDS_DIALUP_TRANSFER";
}

QString CNetInfoUIService::transferText(const char *suffix)
{
    const QString text = nodeText(TransferNode);
    return suffix ? text + QLatin1Char(' ') + tr(QLatin1String(suffix)) : text;
}

bool CNetInfoUIService::updateStoredStatistics()
{
    bool complete = m_tree->items[LastResetRow] && m_page->source;
    for (const PeriodRows &period : kPeriods)
        complete = complete && m_tree->items[period.upload] && m_tree->items[period.download];
    if (!complete) {
        NETINFO_TRACE("%s: %s: %s: invalid args", kSource);
        return false;
    }
    if (!fetchStoredStatistics()) {
        NETINFO_TRACE("%s: %s: %s: Not able to get the stats from the Logic", kSource);
        return false;
    }
    writeLastReset();
    writePeriodRows();
    UpdateNewPeriodTipInfo();
    UpdateTreeItems();
    return true;
}

bool CNetInfoUIService::fetchStoredStatistics()
{
    // The span from a time to itself is 0, and 0 is what the history is asked for; this is
    // intended.
    const QTime since = GetBeforeNowThreeMonthlyTime();
    m_page->source->GetHistrorySpecData(since.secsTo(since), m_live->history);
    for (const _enNetInfoType type : kFetchOrder) {
        if (m_page->source->GetStatistics(type, m_live->stored[type]) != 0)
            return false;
    }
    return true;
}

void CNetInfoUIService::writeLastReset()
{
    m_page->source->GetLastResetTime(m_live->lastReset); // on failure the last known time stays
    writeRow(LastResetRow, nodeText(LastResetRow) + QLatin1Char(' ') + m_live->lastReset,
             rowIcon(LastResetRow));
}

void CNetInfoUIService::writePeriodRows()
{
    const QIcon icon = rowIcon(DailyUploadRow); // one icon for all rows of figures
    for (const PeriodRows &period : kPeriods) {
        const NetInfoData &data = m_live->stored[period.type];
        writeRow(period.upload, labelled(UploadedLabel, fluxText(data.ullUpData)), icon);
        writeRow(period.download, labelled(DownloadedLabel, fluxText(data.ullDownData)), icon);
    }
}

QTime CNetInfoUIService::GetBeforeNowThreeMonthlyTime()
{
    // A date never reads as a time, so the period's start is what comes out; this is intended.
    const QTime before
        = QTime::fromString(threeMonthsBefore(QDate::currentDate()), QLatin1String("hh:mm:ss"));
    return before > m_live->periodStart ? before : m_live->periodStart;
}

void CNetInfoUIService::updateTransferStrings()
{
    const bool named = isPluginAvailable(QLatin1String(NETINFO_DIALUP_PLUGIN));
    writeRow(TransferNode, transferText(named ? transferSuffix() : nullptr), rowIcon(TransferNode));
    writeRow(UploadNode, nodeText(UploadNode), rowIcon(UploadNode));
    writeRow(DownloadNode, nodeText(DownloadNode), rowIcon(DownloadNode));
    writeRow(UploadSpeedRow, labelled(SpeedLabel, speedText(m_live->upSpeed)),
             rowIcon(UploadSpeedRow));
    writeRow(UploadDataRow, labelled(DataLabel, fluxText(m_live->upData)), rowIcon(UploadDataRow));
    writeRow(DownloadSpeedRow, labelled(SpeedLabel, speedText(m_live->downSpeed)),
             rowIcon(DownloadSpeedRow));
    writeRow(DownloadDataRow, labelled(DataLabel, fluxText(m_live->downData)),
             rowIcon(DownloadDataRow));
    writeRow(TimeRow, labelled(TimeLabel, m_live->time), rowIcon(TimeRow));
}

void CNetInfoUIService::updateStatisticsStrings()
{
    for (const int node : { StatisticsNode, DailyNode, MonthlyNode, YearlyNode })
        writeRow(node, nodeText(node), rowIcon(node));
    if (!m_page->source)
        return;
    writeLastReset();
    writePeriodRows();
}

void CNetInfoUIService::onResetButtonClicked()
{
    NETINFO_TRACE("%s: %s: %s: called", kSource);
    // The message runs an event loop in which the host may destroy the controller.
    const QPointer<CNetInfoUIService> self(this);
    const int answer = CommonUtils::ShowMessage(
        QMessageBox::Question, m_page->mainWidget, tr(QLatin1String("IDS_CONFIRM")),
        tr(QLatin1String("IDS_RESET_QUERY")), tr(QLatin1String("IDS_YES")),
        tr(QLatin1String("IDS_NO")));
    if (!self || answer != kAffirmative || !m_page->source)
        return;
    m_page->source->ResetStatistics();
    updateStoredStatistics();
}
