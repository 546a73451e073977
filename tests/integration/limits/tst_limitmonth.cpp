// Scripted months: each warning comes exactly once a period, whatever restarts happen. The expected
// warnings are worked out here from the calendar, without the plug-in's or the SDK's rules.

#include <QDateTime>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QtTest>

#include <random>
#include <set>

#include "FakeHost.h"
#include "MonthPlan.h"
#include "PluginFolder.h"

namespace {

constexpr int kRestarts = 30;
constexpr unsigned int kSeed = 20260131;
constexpr int kTimeoutMs = 60000;
const QByteArray kZone("Europe/Berlin");

enum Recurrence { Daily, Weekly, Monthly };

struct Month
{
    Recurrence recurrence;
    QDate first;
    QDate last; // not included
    int weekday; // of the weekly period, 1 is Monday
    int day; // of the monthly period
    int megabytes;
    int hours;
};

//! The first day of the period that \a date lies in.
QDate periodStart(const Month &month, const QDate &date)
{
    const auto startIn = [&month](const QDate &any) {
        return QDate(any.year(), any.month(), std::min(month.day, any.daysInMonth()));
    };
    switch (month.recurrence) {
    case Daily:
        return date;
    case Weekly:
        return date.addDays(-((date.dayOfWeek() - month.weekday + 7) % 7));
    case Monthly:
        break;
    }
    const QDate start = startIn(date);
    return start <= date ? start : startIn(QDate(date.year(), date.month(), 1).addDays(-1));
}

struct Script
{
    std::vector<qint64> steps; // seconds since 1970 UTC
    std::set<std::size_t> borders; // steps that are the first of a period
    QStringList warnings; // "SECONDS KEY"
};

//! What must happen in \a month.
Script scriptOf(const Month &month)
{
    const QTimeZone zone(kZone);
    Script script;
    QDate period;
    quint64 bytes = 0;
    qint64 seconds = 0;
    std::set<QByteArray> shown;
    QDateTime now(month.first, QTime(0, 0), zone);
    const QDateTime end(month.last, QTime(0, 0), zone);
    const auto warn = [&](const char *key) {
        if (shown.insert(key).second)
            script.warnings << QString::number(now.toSecsSinceEpoch()) + QLatin1Char(' ')
                    + QLatin1String(key);
    };
    for (; now < end; now = now.addSecs(MonthPlan::kStep)) {
        if (periodStart(month, now.date()) != period) {
            period = periodStart(month, now.date());
            bytes = 0;
            seconds = 0;
            shown.clear();
            script.borders.insert(script.steps.size());
        }
        script.steps.push_back(now.toSecsSinceEpoch());
        if (MonthPlan::isConnected(now)) {
            bytes += MonthPlan::kDownload + MonthPlan::kUpload;
            seconds += MonthPlan::kStep;
        }
        const quint64 limit = quint64(month.megabytes) * MonthPlan::kMegabyte;
        if (bytes >= limit)
            warn("IDS_BOX_WARNAFTER");
        else if (bytes * 100 >= limit * 80)
            warn("IDS_BOX_WARNBEFORE");
        if (seconds >= month.hours * 3600)
            warn("IDS_BOX_TIMEWARNAFTER");
        else if (seconds >= month.hours * 3600 - 1800)
            warn("IDS_BOX_TIMEWARNBEFORE");
    }
    return script;
}

//! Where restarts happen: never right at a period's beginning, because the first report after a
//! start is no new period.
std::set<std::size_t> randomRestarts(const Script &script, std::mt19937 &random)
{
    std::set<std::size_t> restarts;
    while (restarts.size() < kRestarts) {
        const std::size_t step = 1 + random() % (script.steps.size() - 1);
        if (script.borders.count(step) == 0)
            restarts.insert(step);
    }
    return restarts;
}

QByteArray settings(const Month &month)
{
    const auto is = [&month](Recurrence one) {
        return QByteArray(month.recurrence == one ? "true" : "false");
    };
    return "[uselimit]\nchkRecurrence=true\nradioDaily=" + is(Daily) + "\nradioWeekly=" + is(Weekly)
        + "\nradioMonthly=" + is(Monthly)
        + "\nchkVolume=true\nchkTimeVolume=true\nSizeVolume=" + QByteArray::number(month.megabytes)
        + "\nSizeTimeVolume=" + QByteArray::number(month.hours)
        + "\nchkWarnbefore=true\nchkWarnAfter=true\nShowDataWarnAfter=true\nShowDataWarnBefor=true"
          "\nShowTimeWarnBefor=true\nShowTimeWarnAfter=true\nstartdate=01-01-2026\nstartweekdate="
        + QByteArray::number(month.weekday - 1)
        + "\nstartmonthdate=" + QByteArray::number(month.day - 1);
}

} // namespace

class tst_LimitMonth : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void eachWarningComesOncePerPeriod_data();
    void eachWarningComesOncePerPeriod();

private:
    [[nodiscard]] QStringList runSegment(const Month &month, qint64 from, qint64 to, bool kill);
    void print(const QStringList &warnings) const;

    QScopedPointer<PluginFolder> m_plugin;
    QScopedPointer<QTemporaryDir> m_user;
};

Q_DECLARE_METATYPE(Month)

void tst_LimitMonth::init()
{
    resetFakeHost();
    m_plugin.reset(new PluginFolder);
    m_plugin->useShippedFiles();
    m_user.reset(new QTemporaryDir);
}

QStringList tst_LimitMonth::runSegment(const Month &month, qint64 from, qint64 to, bool kill)
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_user->path()); // else Qt complains
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(NETINFO_LIMIT_SEGMENT),
                  { fakeHost().libraryPath, m_user->path() + QLatin1Char('/'),
                    QString::fromLatin1(kZone), QString::number(month.weekday - 1),
                    QString::number(month.day), QString::number(from), QString::number(to),
                    QLatin1String(kill ? "kill" : "close") });
    if (!program.waitForFinished(kTimeoutMs))
        return { QStringLiteral("the program hangs") };
    const bool asWanted = kill
        ? program.exitStatus() == QProcess::CrashExit
        : program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0;
    QStringList lines
        = QString::fromLatin1(program.readAllStandardOutput()).split(QLatin1Char('\n'));
    lines.removeLast();
    if (!asWanted)
        lines << QStringLiteral("the program ended in another way");
    return lines;
}

void tst_LimitMonth::print(const QStringList &warnings) const
{
    const QTimeZone zone(kZone);
    for (const QString &line : warnings) {
        const qint64 at = line.section(QLatin1Char(' '), 0, 0).toLongLong();
        const QDateTime local = QDateTime::fromSecsSinceEpoch(at, zone);
        qInfo("%s %s", qPrintable(local.toString(QStringLiteral("ddd yyyy-MM-dd hh:mm"))),
              qPrintable(line.section(QLatin1Char(' '), 1)));
    }
}

void tst_LimitMonth::eachWarningComesOncePerPeriod_data()
{
    QTest::addColumn<Month>("month");
    QTest::addColumn<int>("periods");
    QTest::newRow("daily") << Month { Daily, QDate(2026, 3, 1), QDate(2026, 4, 1), 1, 1, 100, 6 }
                           << 31;
    QTest::newRow("weekly from Thursday")
        << Month { Weekly, QDate(2026, 3, 1), QDate(2026, 4, 1), 4, 1, 600, 40 } << 5;
    QTest::newRow("monthly from the 31st")
        << Month { Monthly, QDate(2026, 1, 28), QDate(2026, 5, 1), 1, 31, 2500, 150 } << 5;
}

void tst_LimitMonth::eachWarningComesOncePerPeriod()
{
    QFETCH(Month, month);
    QFETCH(int, periods);
    const Script script = scriptOf(month);
    QCOMPARE(int(script.borders.size()), periods);
    QFile file(m_user->filePath(QStringLiteral("DataUsageLimit.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(settings(month));
    file.close();

    std::mt19937 random(kSeed);
    std::set<std::size_t> ends = randomRestarts(script, random);
    ends.insert(script.steps.size());
    QStringList warnings;
    std::size_t from = 0;
    for (const std::size_t to : ends) {
        const bool kill = random() % 2 == 0;
        warnings
            += runSegment(month, script.steps[from], script.steps[to - 1] + MonthPlan::kStep, kill);
        from = to;
    }
    print(warnings);
    // Warnings of one report come in the order of data and time.
    QCOMPARE(warnings, script.warnings);
}

QTEST_GUILESS_MAIN(tst_LimitMonth)
#include "tst_limitmonth.moc"
