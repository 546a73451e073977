#include "StatisticsTexts.h"

#include <QDateTime>
#include <QLocale>

#include <host/Change.h>
#include <host/CommonUtils.h>

#include "NetInfoConfigParse.h"
#include "NetInfoConfigRules.h"
#include "NetInfoTextRules.h"
#include "QtCompat.h"

namespace {

QString text(const char *key)
{
    return Change::tr(QLatin1String("NetInfoUIExPlugin"), QLatin1String(key));
}

} // namespace

StatisticsTexts::StatisticsTexts()
{
    QString group = QLatin1String("customize");
    QString module = QLatin1String("common");
    QVector<NetInfoConfig> items;
    NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, items);
    NetInfoConfigParse::OnDestroy();
    NetInfoRules::appendUnits(items, QLatin1String("fluxunit"), m_flux);
    NetInfoRules::appendUnits(items, QLatin1String("speedunit"), m_speed);
}

QString StatisticsTexts::labelled(const char *key, const QString &value) const
{
    return text(key) + QLatin1Char(' ') + value;
}

QString StatisticsTexts::flux(const char *key, quint64 bytes) const
{
    return labelled(
        key, CommonUtils::SpeedFluxToString(m_flux, bytes, QLatin1String("NetInfoUIExPlugin")));
}

QString StatisticsTexts::speed(quint64 bytesPerSecond) const
{
    return labelled("IDS_TREE_SPEED",
                    CommonUtils::SpeedFluxToString(m_speed, bytesPerSecond,
                                                   QLatin1String("NetInfoUIExPlugin")));
}

int StatisticsTexts::format(const FakeSdk &sdk)
{
    const FakeReport &live = sdk.reports[0];
    int length = 0;
    const auto add = [&length](const QString &row) { length += int(row.size()); };
    add(labelled("IDS_TREE_TRANSFER", text("IDS_DIALUP_TRANSFER")));
    add(speed(live.uploadSpeed));
    add(flux("IDS_TREE_DATA", live.upload));
    add(speed(live.downloadSpeed));
    add(flux("IDS_TREE_DATA", live.download));
    add(labelled("IDS_TREE_TIME_TRANSFER", NetInfoRules::durationText(live.time)));
    add(labelled("IDS_TREE_TIME_LASTRESET",
                 QLocale::system().toString(QtCompat::dateTimeFromSeconds(sdk.reports[2].lastReset),
                                            QLocale::ShortFormat)));
    for (const int kind : { 1, 4, 5 }) {
        add(flux("IDS_TREE_UPLOADED_DATA", sdk.reports[kind].upload));
        add(flux("IDS_TREE_DOWNLOADED_DATA", sdk.reports[kind].download));
    }
    return length;
}
