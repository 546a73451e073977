#include <host/velq_extension.h>

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <vector>

#include "SdkReport.h"
#include "SimulatedSdk.h"

//! Months in a second: the SDK's own sums at simulated times.
class tst_SimulatedSdk : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void daysEndAtLocalMidnight();
    void weeksBeginOnThursday();
    void monthsBeginOnThe31st();
    void reopeningContinuesTheSums();
    void aKilledProcessLosesNothing();
    void randomRestartsChangeNothing();
    void aResetIsRemembered();
    void ticksCallTheCallbacks();
    void liveFiguresAndTheConnection();
    void withoutAProcessEverythingFails();

private:
    void open(int weekday = 0, int dayOfMonth = 1) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

constexpr int kDaily = 1;
constexpr int kWeekly = 3;
constexpr int kMonthly = 4;
constexpr int kYearly = 5;

std::vector<QByteArray> g_events;

int note(int event, void *data)
{
    g_events.push_back(QByteArray::number(event) + ' '
                       + QByteArray(static_cast<const char *>(data), 8).toHex());
    return 0;
}

void setLocal(const QDate &date, const QTime &time)
{
    SimulatedSdk::setNow(QDateTime(date, time).toSecsSinceEpoch());
}

void setUtc(const char *text)
{
    SimulatedSdk::setNow(
        QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate).toSecsSinceEpoch());
}

} // namespace

void tst_SimulatedSdk::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    g_events.clear();
    setUtc("2031-01-01T12:00:00Z");
}

void tst_SimulatedSdk::cleanup()
{
    SimulatedSdk::close();
}

void tst_SimulatedSdk::open(int weekday, int dayOfMonth) const
{
    QVERIFY(SimulatedSdk::open(m_folder->path().toStdString(), "Europe/Berlin"));
    QCOMPARE(VELQ_StatisticsSrv_SetPeriodStart(weekday, dayOfMonth), 0);
}

void tst_SimulatedSdk::daysEndAtLocalMidnight()
{
    open();
    setUtc("2031-03-29T22:59:59Z"); // 23:59:59 in Berlin
    SimulatedSdk::flow(1000, 10, 60);
    QCOMPARE(sdkReport(kDaily).download(), quint64(1000));
    setUtc("2031-03-29T23:00:00Z"); // the 30th begins
    QCOMPARE(sdkReport(kDaily).download(), quint64(0));
    SimulatedSdk::flow(200, 2, 7);
    setUtc("2031-03-30T21:59:59Z"); // the last second of 23 hours
    SimulatedSdk::flow(20, 1, 3);
    QCOMPARE(sdkReport(kDaily).download(), quint64(220));
    QCOMPARE(sdkReport(kDaily).upload(), quint64(3));
    QCOMPARE(sdkReport(kDaily).seconds(), qint64(10));
    setUtc("2031-03-30T22:00:00Z");
    QCOMPARE(sdkReport(kDaily).download(), quint64(0));
    QCOMPARE(sdkReport(kMonthly).download(), quint64(1220));
    QCOMPARE(sdkReport(kMonthly).seconds(), qint64(70));
}

void tst_SimulatedSdk::weeksBeginOnThursday()
{
    open(3);
    quint64 expected = 0;
    for (QDate day(2031, 1, 1); day < QDate(2031, 6, 1); day = day.addDays(1)) {
        setLocal(day, QTime(0, 0));
        if (day.dayOfWeek() == Qt::Thursday)
            expected = 0;
        QCOMPARE(sdkReport(kWeekly).download(), expected);
        setLocal(day, QTime(18, 30));
        SimulatedSdk::flow(1000, 0, 1);
        expected += 1000;
        setLocal(day, QTime(23, 59, 59));
        QCOMPARE(sdkReport(kWeekly).download(), expected);
    }
}

void tst_SimulatedSdk::monthsBeginOnThe31st()
{
    open(0, 31);
    const QList<QDate> begins {
        { 2031, 1, 31 }, { 2031, 2, 28 }, { 2031, 3, 31 }, { 2031, 4, 30 }
    };
    quint64 expected = 0;
    quint64 all = 0;
    for (QDate day(2031, 1, 5); day < QDate(2031, 5, 31); day = day.addDays(1)) {
        setLocal(day, QTime(0, 0));
        if (begins.contains(day))
            expected = 0;
        QCOMPARE(sdkReport(kMonthly).download(), expected);
        SimulatedSdk::flow(1000, 0, 1);
        setLocal(day, QTime(23, 59, 59));
        SimulatedSdk::flow(1, 0, 1);
        expected += 1001;
        all += 1001;
        QCOMPARE(sdkReport(kMonthly).download(), expected);
        QCOMPARE(sdkReport(kDaily).download(), quint64(1001));
        QCOMPARE(sdkReport(kYearly).download(), all);
    }
}

void tst_SimulatedSdk::reopeningContinuesTheSums()
{
    open(3, 31);
    SimulatedSdk::flow(1000, 100, 10);
    SimulatedSdk::close();
    setUtc("2031-01-01T13:00:00Z");
    open(3, 31);
    QCOMPARE(sdkReport(0).download(), quint64(0)); // another process, another connection
    for (const int kind : { kDaily, kWeekly, kMonthly, kYearly }) {
        QCOMPARE(sdkReport(kind).download(), quint64(1000));
        QCOMPARE(sdkReport(kind).upload(), quint64(100));
        QCOMPARE(sdkReport(kind).seconds(), qint64(10));
    }
    SimulatedSdk::flow(1, 2, 3);
    QCOMPARE(sdkReport(kDaily).download(), quint64(1001));
    QCOMPARE(sdkReport(kDaily).seconds(), qint64(13));
    SimulatedSdk::close();
    open(); // the period start is not kept
    QCOMPARE(sdkReport(kMonthly).download(), quint64(1001));
    QCOMPARE(sdkHistory(0).download(), quint64(1001));
}

void tst_SimulatedSdk::aKilledProcessLosesNothing()
{
    open();
    SimulatedSdk::flow(1000, 0, 1);
    SimulatedSdk::commit();
    SimulatedSdk::flow(200, 0, 1);
    QCOMPARE(sdkReport(kDaily).download(), quint64(1200));
    SimulatedSdk::abandon();
    open();
    QCOMPARE(sdkReport(kDaily).download(), quint64(1200)); // the kernel still knew
    QCOMPARE(sdkReport(kDaily).seconds(), qint64(1)); // but not for how long
}

void tst_SimulatedSdk::randomRestartsChangeNothing()
{
    QRandomGenerator random(4); // the same in every run
    open(3, 31);
    quint64 expected = 0;
    for (QDate day(2031, 1, 31); day < QDate(2031, 2, 28); day = day.addDays(1)) {
        for (int hour = 0; hour < 24; hour += 3) {
            setLocal(day, QTime(hour, 0));
            const auto bytes = quint64(random.bounded(1000000));
            SimulatedSdk::flow(bytes, 0, 60);
            expected += bytes;
            const quint32 dice = random.bounded(8U);
            if (dice > 1)
                continue;
            SimulatedSdk::commit();
            dice == 0 ? SimulatedSdk::close() : SimulatedSdk::abandon();
            open(3, 31);
        }
        QCOMPARE(sdkReport(kMonthly).download(), expected);
    }
}

void tst_SimulatedSdk::aResetIsRemembered()
{
    open();
    SimulatedSdk::flow(1000, 0, 1);
    setUtc("2031-01-01T12:30:00Z");
    QCOMPARE(VELQ_Statistics_Reset(VELQ_CONNECT_TYPE_DIALUP), 0);
    QCOMPARE(sdkReport(kYearly).download(), quint64(0));
    SimulatedSdk::abandon();
    open();
    QCOMPARE(sdkReport(kYearly).download(), quint64(0));
    QCOMPARE(sdkReport(2).lastReset(), quint32(1925037000)); // 2031-01-01 12:30 UTC
}

void tst_SimulatedSdk::ticksCallTheCallbacks()
{
    open();
    SimulatedSdk::tick();
    QVERIFY(g_events.empty());
    QVERIFY(VELQ_Statistics_RegisterStatisticsCallbackEvent(nullptr) != 0);
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(note), 0);
    SimulatedSdk::tick();
    QCOMPARE(int(g_events.size()), 1);
    QCOMPARE(g_events.front(), QByteArray("8000 0100000000000000"));
    QCOMPARE(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(note), 0);
    QVERIFY(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(note) != 0);
    SimulatedSdk::tick();
    QCOMPARE(int(g_events.size()), 1);
}

void tst_SimulatedSdk::liveFiguresAndTheConnection()
{
    open();
    SimulatedSdk::flow(1000, 500, 10);
    SimulatedSdk::flow(400, 40, 4);
    const SdkReport live = sdkReport(0);
    QCOMPARE(live.download(), quint64(1400));
    QCOMPARE(live.downloadSpeed(), 100U);
    QCOMPARE(live.uploadSpeed(), 10U);
    QCOMPARE(live.seconds(), qint64(14));
    QCOMPARE(sdkReport(kDaily, 1).download(), quint64(0)); // no Wi-Fi
    VELQ_ConnectionStatus *list = nullptr;
    int count = 0;
    QCOMPARE(VELQ_NetConnectSrv_GetConnectionStatus(&list, &count), 0);
    QCOMPARE(count, 1);
    QVERIFY(list);
    QCOMPARE(VELQ_NetConnectSrv_ReleaseConnectionStatus(list), 0);
    QByteArray name(VELQ_CUSTOMIZE_NAME_SIZE, 'x');
    QCOMPARE(VELQ_DevSrv_GetCustomizeName(name.data()), 0);
    QCOMPARE(QByteArray(name.constData()), QByteArray("common"));
}

void tst_SimulatedSdk::withoutAProcessEverythingFails()
{
    QVERIFY(sdkReport(kDaily).isUntouched());
    QVERIFY(sdkReport(kDaily).result != 0);
    QVERIFY(sdkHistory(0).result != 0);
    QVERIFY(VELQ_Statistics_RegisterStatisticsCallbackEvent(note) != 0);
    QVERIFY(VELQ_StatisticsSrv_SetPeriodStart(0, 1) != 0);
    QVERIFY(VELQ_Statistics_Reset(VELQ_CONNECT_TYPE_DIALUP) != 0);
    open();
    QVERIFY(sdkReport(6).result != 0);
    QVERIFY(sdkReport(kDaily, 2).result != 0);
    QVERIFY(VELQ_StatisticsSrv_SetPeriodStart(7, 1) != 0);
    QVERIFY(!SimulatedSdk::open("/dev/null/nowhere", "UTC"));
}

QTEST_GUILESS_MAIN(tst_SimulatedSdk)
#include "tst_simulatedsdk.moc"
