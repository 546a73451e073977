// What the meters of the usage limits show.

#include <QtTest>

#include "LimitTest.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"

namespace {

const QColor kFine(1, 2, 3);
const QColor kNear(4, 5, 6);
const QColor kReached(7, 8, 9);

} // namespace

class tst_LimitMeters : public LimitTest
{
    Q_OBJECT
private slots:
    void aNewLanguageReachesTheTimesUnit();
    void statesHaveTheirColours_data();
    void statesHaveTheirColours();
    void aLimitThatIsOffIsFine();
    void theLimitCountsAndNotTheFeature();
    void theLastColourOfANameWins();
    void aColourWithoutAnEntryIsInvalid();
    void withoutAConfigurationColoursAreClear();
    void theDataMeterShowsBytes();
    void theLargestLimitsFit();
    void bytesWrapAsUnsigned();
    void theTimeMeterShowsSeconds_data();
    void theTimeMeterShowsSeconds();
    void percentagesComeFromTheConfiguration();
    void theTimePercentageTakesSecondsOfHours();
    void theSettingsChooseThePeriod_data();
    void theSettingsChooseThePeriod();
    void eachPeriodHasItsRecord();
    void aFailedFetchLeavesTheMeters();
    void withoutASourceNothingIsShown();
    void theStartMayBeATime();
};

void tst_LimitMeters::aNewLanguageReachesTheTimesUnit()
{
    setLimits();
    use(Period::Monthly, 1, 5000);
    CNetInfoUIService *const service = startLimits();
    report();
    QCOMPARE(timeMeter()->text(), QStringLiteral("1:23 IDS_UNIT_HOURS"));
    fakeHost().language = QStringLiteral(".fr");
    service->Notify(320, 0, 0);
    QCOMPARE(timeMeter()->text(), QStringLiteral("1:23 IDS_UNIT_HOURS.fr"));
}

void tst_LimitMeters::statesHaveTheirColours_data()
{
    QTest::addColumn<double>("megabytes");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<int>("state");
    QTest::newRow("nothing used") << 0.0 << qint64(0) << 0;
    QTest::newRow("fine") << kFineMb << kFineSeconds << 0;
    QTest::newRow("near") << kNearMb << kNearSeconds << 1;
    QTest::newRow("just below the limit") << 99.99 << qint64(7199) << 1;
    QTest::newRow("reached") << kReachedMb << kReachedSeconds << 2;
    QTest::newRow("the time of -1, unsigned") << 1e9 << qint64(-1) << 2;
}

void tst_LimitMeters::statesHaveTheirColours()
{
    QFETCH(double, megabytes);
    QFETCH(qint64, seconds);
    QFETCH(int, state);
    const QColor colours[] = { kFine, kNear, kReached };
    setLimits();
    use(Period::Monthly, megabytes, seconds);
    CNetInfoUIService *const service = startLimits();
    report();
    QCOMPARE(dataMeter()->colour(), colours[state]);
    QCOMPARE(timeMeter()->colour(), colours[state]);
    QCOMPARE(service->ShowDataColorPrompt(megabytes), state);
    QCOMPARE(service->ShowTimeColorPrompt(quint64(seconds)), state);
}

void tst_LimitMeters::aLimitThatIsOffIsFine()
{
    setLimits();
    use(Period::Monthly, 1e6, 1000000);
    set(VLS_CHK_VOLUME, { "false", "true" });
    CNetInfoUIService *const service = startLimits();
    report();
    QCOMPARE(dataMeter()->colour(), kFine);
    QCOMPARE(timeMeter()->colour(), kReached);
    QCOMPARE(service->ShowDataColorPrompt(1e6), 0);
    set(VLS_CHK_VOLUME, { "true", "false" });
    service->InitParam();
    report();
    QCOMPARE(dataMeter()->colour(), kReached);
    QCOMPARE(timeMeter()->colour(), kFine);
    QCOMPARE(service->ShowTimeColorPrompt(1e6), 0);
}

void tst_LimitMeters::theLimitCountsAndNotTheFeature()
{
    setLimits();
    use(Period::Monthly, kReachedMb, kReachedSeconds);
    startWith(limitItems(), { "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" });
    const WarningWatch watch;
    report();
    QCOMPARE(dataMeter()->colour(), kReached);
    QCOMPARE(timeMeter()->colour(), kReached);
    QCOMPARE(int(watch.texts.size()), 1);
}

void tst_LimitMeters::theLastColourOfANameWins()
{
    setLimits();
    use(Period::Monthly, kNearMb, kReachedSeconds);
    startWith(limitItems()
              + "<Color><item name=\"BeforeWarningColor\" R=\"10\" G=\"11\" B=\"12\"/>"
                "<item name=\"BeforeWarningColo\" R=\"20\" G=\"21\" B=\"22\"/></Color>");
    report();
    QCOMPARE(dataMeter()->colour(), QColor(10, 11, 12));
    QCOMPARE(timeMeter()->colour(), kReached);
}

void tst_LimitMeters::aColourWithoutAnEntryIsInvalid()
{
    setLimits();
    use(Period::Monthly, kReachedMb, 0);
    startWith("<Color><item name=\"NoWarningColor\" R=\"1\" G=\"2\" B=\"3\"/></Color>");
    report();
    QVERIFY(!dataMeter()->colour().isValid());
    QCOMPARE(timeMeter()->colour(), kFine);
}

void tst_LimitMeters::withoutAConfigurationColoursAreClear()
{
    m_folder->writeConfig(PluginFolder::document(limitItems()));
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    QVERIFY(service->Init());
    QVERIFY(service->updateStoredStatistics());
    QCOMPARE(dataMeter()->colour(), QColor(255, 255, 255, 0));
    QCOMPARE(timeMeter()->colour(), QColor(255, 255, 255, 0));
    QCOMPARE(dataMeter()->colour().alpha(), 0);
}

void tst_LimitMeters::theDataMeterShowsBytes()
{
    setLimits();
    fakeSdk().reports[4].upload = 1000001;
    fakeSdk().reports[4].download = 2000002;
    startLimits();
    report();
    QCOMPARE(dataMeter()->text(), QStringLiteral("3000003 B"));
    QVERIFY(dataMeter()->meterValue() == 3000003.0L);
    QVERIFY(dataMeter()->meterMaximum() == 104857600.0L);
}

void tst_LimitMeters::theLargestLimitsFit()
{
    setLimits();
    set(VLS_SIZE_VOLUME, { "4294967295", "4294967295" });
    use(Period::Monthly, 1e9, 1000000000);
    startLimits();
    report();
    QVERIFY(dataMeter()->meterMaximum() == 4294967295.0L * 1048576.0L);
    QVERIFY(timeMeter()->meterMaximum() == 4294967295.0L * 3600.0L);
    QCOMPARE(dataMeter()->colour(), kFine);
    QCOMPARE(timeMeter()->colour(), kFine);
}

void tst_LimitMeters::bytesWrapAsUnsigned()
{
    setLimits();
    fakeSdk().reports[4].upload = ~quint64(0);
    fakeSdk().reports[4].download = 3;
    startLimits();
    report();
    QVERIFY(dataMeter()->meterValue() == 2.0L);
    fakeSdk().reports[4].download = 0;
    report();
    QCOMPARE(dataMeter()->text(), QStringLiteral("18446744073709551615 B"));
    QVERIFY(dataMeter()->meterValue() == 18446744073709551615.0L);
}

void tst_LimitMeters::theTimeMeterShowsSeconds_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << "0:00 IDS_UNIT_HOURS";
    QTest::newRow("59 seconds") << qint64(59) << "0:00 IDS_UNIT_HOURS";
    QTest::newRow("60 seconds") << qint64(60) << "0:01 IDS_UNIT_HOURS";
    QTest::newRow("an hour and a half") << qint64(5400) << "1:30 IDS_UNIT_HOURS";
    QTest::newRow("30 hours") << qint64(108000) << "30:00 IDS_UNIT_HOURS";
    QTest::newRow("-1, unsigned") << qint64(-1) << "5124095576030431:00 IDS_UNIT_HOURS";
}

void tst_LimitMeters::theTimeMeterShowsSeconds()
{
    QFETCH(qint64, seconds);
    setLimits();
    fakeSdk().reports[4].time = seconds;
    startLimits();
    report();
    QTEST(timeMeter()->text(), "text");
    QVERIFY(timeMeter()->meterValue() == static_cast<long double>(quint64(seconds)));
    QVERIFY(timeMeter()->meterMaximum() == 7200.0L);
}

void tst_LimitMeters::percentagesComeFromTheConfiguration()
{
    setLimits();
    CNetInfoUIService *const service
        = startWith("<Limit><item name=\"DATAVOLUMELIMIT\" value=\"80\" value1=\"0\"/>"
                    "<item name=\"TIMEVOLUMELIMIT\" value=\"50\" value1=\"0\"/></Limit>");
    QVERIFY(service->OperationPersent(80));
    QVERIFY(!service->OperationPersent(79.99L));
    QVERIFY(service->TimeOperationPersent(5, 10));
    QVERIFY(!service->TimeOperationPersent(4, 10));
    QVERIFY(service->TimeOperationPersent(1, 0));
    QVERIFY(!service->TimeOperationPersent(0, 0));
    QCOMPARE(service->ShowDataColorPrompt(80), 1);
    QCOMPARE(service->ShowDataColorPrompt(79.99L), 0);
    set(VLS_SIZE_VOLUME, { "0", "5" });
    service->InitDataTimeVolLimit();
    QVERIFY(!service->OperationPersent(80));
    QCOMPARE(service->ShowDataColorPrompt(0), 2);
    QCOMPARE(service->ShowTimeColorPrompt(0), 0);
    QVERIFY(timeMeter()->meterMaximum() == 5 * 3600.0L);
}

void tst_LimitMeters::theTimePercentageTakesSecondsOfHours()
{
    setLimits();
    CNetInfoUIService *const service
        = startWith("<Limit><item name=\"TIMEVOLUMELIMIT\" value=\"50\" value1=\"0\"/></Limit>");
    QCOMPARE(service->ShowTimeColorPrompt(0.99L), 0);
    QCOMPARE(service->ShowTimeColorPrompt(1), 1); // half of the number of hours
    QCOMPARE(service->ShowTimeColorPrompt(7200), 2);
}

void tst_LimitMeters::theSettingsChooseThePeriod_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<int>("period");
    const auto row = [](const char *name, const QStringList &settings, Period period) {
        QTest::newRow(name) << settings << int(period);
    };
    row("daily", { "true", "true", "false", "false" }, Period::Daily);
    row("weekly", { "true", "false", "true", "false" }, Period::Weekly);
    row("monthly", { "true", "false", "false", "true" }, Period::Monthly);
    row("neither is monthly", { "true", "false", "false", "false" }, Period::Monthly);
    row("daily goes before weekly", { "true", "true", "true", "true" }, Period::Daily);
    row("weekly goes before monthly", { "true", "false", "true", "true" }, Period::Weekly);
    row("no recurrence measures the history", { "false", "true", "true", "true" }, Period::History);
    row("empty texts are on", { "", "", "", "" }, Period::Daily);
    row("garbage is on", { "garbage", "false", "FALSE", "" }, Period::Weekly);
}

void tst_LimitMeters::theSettingsChooseThePeriod()
{
    QFETCH(QStringList, settings);
    QFETCH(int, period);
    set(VLS_CHK_RECURRENCE, settings);
    for (const Period one : { Period::Daily, Period::History, Period::Weekly, Period::Monthly })
        use(one, int(one), int(one) * 60);
    fakeSdk().reports[5].time = 900; // the year's is never asked for
    start();
    report();
    QVERIFY(dataMeter()->meterValue() == period * 1048576.0L);
    QVERIFY(timeMeter()->meterValue() == period * 60.0L);
}

void tst_LimitMeters::eachPeriodHasItsRecord()
{
    CNetInfoUIService *const service = start();
    for (const Period one : { Period::Daily, Period::History, Period::Weekly, Period::Monthly })
        use(one, int(one), int(one) * 60);
    QVERIFY(service->updateStoredStatistics());
    struct
    {
        Period period;
        void (CNetInfoUIService::*both)();
        void (CNetInfoUIService::*data)();
        void (CNetInfoUIService::*time)();
    } const rows[] = { { Period::Daily, &CNetInfoUIService::ShowDaily,
                         &CNetInfoUIService::ShowDailyDataVolumeLimit,
                         &CNetInfoUIService::ShowDailyTimeVolumeLimit },
                       { Period::Weekly, &CNetInfoUIService::ShowWeekly,
                         &CNetInfoUIService::ShowWeeklyDataVolumeLimit,
                         &CNetInfoUIService::ShowWeeklyTimeVolumeLimit },
                       { Period::Monthly, &CNetInfoUIService::ShowMonthly,
                         &CNetInfoUIService::ShowMonthlyDataVolumeLimit,
                         &CNetInfoUIService::ShowMonthlyTimeVolumeLimit },
                       { Period::History, &CNetInfoUIService::ShowSpecHistroy,
                         &CNetInfoUIService::ShowSpecHistroyDataVolumeLimit,
                         &CNetInfoUIService::ShowSpecHistroyTimeVolumeLimit } };
    const QColor none;
    for (const auto &row : rows) {
        const long double bytes = int(row.period) * 1048576.0L;
        const long double seconds = int(row.period) * 60.0L;
        dataMeter()->SetMeter(QString(), none, -1, -1);
        timeMeter()->SetMeter(QString(), none, -1, -1);
        (service->*row.data)();
        QVERIFY(dataMeter()->meterValue() == bytes);
        QVERIFY(timeMeter()->meterValue() == -1.0L);
        dataMeter()->SetMeter(QString(), none, -1, -1);
        (service->*row.time)();
        QVERIFY(dataMeter()->meterValue() == -1.0L);
        QVERIFY(timeMeter()->meterValue() == seconds);
        timeMeter()->SetMeter(QString(), none, -1, -1);
        (service->*row.both)();
        QVERIFY(dataMeter()->meterValue() == bytes);
        QVERIFY(timeMeter()->meterValue() == seconds);
    }
}

void tst_LimitMeters::aFailedFetchLeavesTheMeters()
{
    setLimits();
    use(Period::Monthly, kNearMb, 60);
    startLimits();
    report();
    use(Period::Monthly, kReachedMb, 120);
    fakeSdk().reports[3].result = 1; // weekly, the last one fetched
    report();
    QCOMPARE(dataMeter()->colour(), kNear);
    QVERIFY(timeMeter()->meterValue() == 60.0L);
}

void tst_LimitMeters::withoutASourceNothingIsShown()
{
    setLimits();
    use(Period::Monthly, kNearMb, kNearSeconds);
    CNetInfoUIService *const service = startLimits();
    report();
    NetInfoUILogic::Destroy();
    QCOMPARE(service->ShowDataColorPrompt(1e6), 0);
    QCOMPARE(service->ShowTimeColorPrompt(1e6), 0);
    service->onNetInfoSettingsChanged(0, 0, false, false);
    QCOMPARE(dataMeter()->colour(), kNear);
    QCOMPARE(timeMeter()->colour(), kNear);
}

void tst_LimitMeters::theStartMayBeATime()
{
    CNetInfoUIService *const service = start();
    for (const char *text : { "", "01-02-2024", "31-12-9999", "garbage" }) {
        set(VLS_START_DATE, { text });
        service->InitDate();
        QVERIFY(!service->GetBeforeNowThreeMonthlyTime().isValid());
    }
    set(VLS_START_DATE, { "12:34:56" });
    service->InitDate();
    QCOMPARE(service->GetBeforeNowThreeMonthlyTime(), QTime(12, 34, 56));
    set(VLS_START_DATE, { "" });
    service->InitParam();
    QVERIFY(!service->GetBeforeNowThreeMonthlyTime().isValid());
}

QTEST_MAIN(tst_LimitMeters)
#include "tst_limitmeters.moc"
