#include "ConsoleReport.h"

#include <host/CommonUtils.h>

#include <QVector>

#include <iterator>

namespace {

struct Unit
{
    const char *name;
    quint64 factor;
    const char *amountId;
    const char *speedId;
};
constexpr Unit kUnits[] = {
    { "B", 1, "IDS_UNIT_B", "IDS_UNIT_BPS" },
    { "KB", 1ULL << 10, "IDS_UNIT_KB", "IDS_UNIT_KBPS" },
    { "MB", 1ULL << 20, "IDS_UNIT_MB", "IDS_UNIT_MBPS" },
    { "GB", 1ULL << 30, "IDS_UNIT_GB", "IDS_UNIT_GBPS" },
    { "TB", 1ULL << 40, "IDS_UNIT_TB", "IDS_UNIT_TBPS" },
};

// Widths in characters: interface, time, two speeds, two amounts.
constexpr int kColumns[] = { 15, 9, 13, 13, 32, 32 };

QVector<TagUnits> unitTable(const char *Unit::*id)
{
    QVector<TagUnits> table;
    for (const Unit &unit : kUnits)
        table.append({ QLatin1String(unit.name), 0, unit.factor, QLatin1String(unit.*id) });
    return table;
}

QString formatted(quint64 value, const char *Unit::*id)
{
    return CommonUtils::SpeedFluxToString(unitTable(id), value,
                                          QStringLiteral("NetInfoUIExPlugin"));
}

QString amount(quint64 bytes)
{
    return QStringLiteral("%1 B (%2)").arg(bytes).arg(formatted(bytes, &Unit::amountId));
}

QString duration(qint64 seconds)
{
    const QLatin1Char zero('0');
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600, 2, 10, zero)
        .arg(seconds / 60 % 60, 2, 10, zero)
        .arg(seconds % 60, 2, 10, zero);
}

// The name to the left, numbers to the right.
QString row(const QStringList &cells)
{
    QString line = cells.constFirst().leftJustified(kColumns[0]);
    for (int i = 1; i < cells.size(); ++i)
        line += QLatin1Char(' ') + cells.at(i).rightJustified(kColumns[i]);
    return line;
}

} // namespace

ConsoleReport::ConsoleReport(bool demo)
    : m_demo(demo)
{
}

QString ConsoleReport::heading()
{
    return row({ QStringLiteral("Interface"), QStringLiteral("Time"), QStringLiteral("Up"),
                 QStringLiteral("Down"), QStringLiteral("Uploaded"),
                 QStringLiteral("Downloaded") });
}

QString ConsoleReport::remark(const LiveSample &sample) const
{
    if (sample.connected)
        return QString();
    if (sample.interfaceName.isEmpty())
        return QStringLiteral("No interface carries a default route; nothing is counted.");
    return QStringLiteral("Interface %1 is not connected; nothing is counted.")
        .arg(sample.interfaceName);
}

QStringList ConsoleReport::lines(const LiveSample &sample)
{
    QStringList result;
    const QString note = remark(sample);
    if (note != m_remark && !note.isEmpty())
        result.append(note);
    m_remark = note;
    const QString name
        = sample.interfaceName.isEmpty() ? QStringLiteral("-") : sample.interfaceName;
    result.append(
        row({ name, duration(sample.seconds), formatted(sample.uploadSpeed, &Unit::speedId),
              formatted(sample.downloadSpeed, &Unit::speedId), amount(sample.upload),
              amount(sample.download) }));
    m_last = sample;
    ++m_count;
    return result;
}

int ConsoleReport::count() const
{
    return m_count;
}

QStringList ConsoleReport::summary() const
{
    if (!m_last)
        return { QStringLiteral("No figures came within this time.") };
    if (!m_last->counters)
        return { QStringLiteral("There are no kernel counters to compare with.") };
    const VELQ_Counters &counters = *m_last->counters;
    const QString source = m_demo ? QStringLiteral("Scripted") : QStringLiteral("Kernel");
    const QString first
        = QStringLiteral("%1 counters of %2 over the same %3 s: uploaded %4 B, downloaded %5 B.")
              .arg(source, m_last->interfaceName)
              .arg(m_last->seconds)
              .arg(counters.lastUpload - counters.firstUpload)
              .arg(counters.lastDownload - counters.firstDownload);
    if (m_last->agrees())
        return { first, QStringLiteral("The live figures are equal to these counters.") };
    return { first,
             QStringLiteral("The live figures DIFFER: uploaded %1 B, downloaded %2 B.")
                 .arg(m_last->upload)
                 .arg(m_last->download) };
}
