// New periods, which arm the warnings again, and changed settings, which do not.

#include <QFile>
#include <QtTest>

#include "LimitTest.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"

namespace {

const QStringList kAllPending = { "true", "true", "true", "true" };
const QStringList kNonePending = { "false", "false", "false", "false" };

} // namespace

class tst_LimitPeriods : public LimitTest
{
    Q_OBJECT
private slots:
    void theFirstReportIsNoNewPeriod();
    void aNewPeriodWarnsAgain();
    void aNewPeriodArmsWhatIsOn_data();
    void aNewPeriodArmsWhatIsOn();
    void aNewPeriodClearsNothing();
    void aNewPeriodMayWarnAtOnce();
    void onlyLessTimeIsANewPeriod_data();
    void onlyLessTimeIsANewPeriod();
    void bytesMakeNoNewPeriod();
    void theHistoryHasNoPeriods();
    void onlyTheChosenRecordCounts();
    void everyRecurrenceHasACopyOfItsOwn();
    void anArmedFlagIsNotSavedAgain();
    void changedSettingsAreReadAgain();
    void changedSettingsArmNothing();
    void changedSettingsMayWarnAtOnce();
    void theFlagsAreReadAgainWithTheSettings();
};

void tst_LimitPeriods::theFirstReportIsNoNewPeriod()
{
    setLimits();
    set(10, kNonePending);
    startLimits();
    for (const qint64 seconds : { 0, 0, 1, 2 }) {
        passTime(seconds);
        QCOMPARE(flags(), kNonePending);
    }
    CNetInfoUIService::Destroy();
    NetInfoUILogic::Destroy();
    startLimits();
    passTime(1); // less than the last one before the restart
    QCOMPARE(flags(), kNonePending);
}

void tst_LimitPeriods::aNewPeriodWarnsAgain()
{
    setLimits();
    startLimits();
    const QStringList all = { "IDS_BOX_WARNBEFORE", "IDS_BOX_TIMEWARNBEFORE", "IDS_BOX_WARNAFTER",
                              "IDS_BOX_TIMEWARNAFTER" };
    for (int month = 0; month < 3; ++month) {
        QCOMPARE(approach(Period::Monthly), all);
        QCOMPARE(savedFlags(), kNonePending);
        passTime(0);
        QCOMPARE(savedFlags(), kAllPending);
    }
}

void tst_LimitPeriods::aNewPeriodArmsWhatIsOn_data()
{
    QTest::addColumn<QStringList>("switches");
    QTest::addColumn<QStringList>("flags");
    QTest::newRow("both") << QStringList({ "true", "true" }) << kAllPending;
    QTest::newRow("before") << QStringList({ "true", "false" })
                            << QStringList({ "false", "true", "true", "false" });
    QTest::newRow("after") << QStringList({ "false", "true" })
                           << QStringList({ "true", "false", "false", "true" });
    QTest::newRow("neither") << QStringList({ "false", "false" }) << kNonePending;
    QTest::newRow("only true is on") << QStringList({ "TRUE", "" }) << kNonePending;
}

void tst_LimitPeriods::aNewPeriodArmsWhatIsOn()
{
    QFETCH(QStringList, switches);
    setLimits();
    set(VLS_CHK_WARN_BEFORE, switches);
    set(10, kNonePending);
    startLimits();
    passTime(100);
    QCOMPARE(flags(), kNonePending);
    passTime(99);
    QTEST(flags(), "flags");
    QTEST(savedFlags(), "flags");
}

void tst_LimitPeriods::aNewPeriodClearsNothing()
{
    set(VLS_CHK_WARN_BEFORE, { "false", "false" });
    startLimits();
    passTime(100);
    passTime(99);
    QCOMPARE(flags(), kAllPending);
}

void tst_LimitPeriods::aNewPeriodMayWarnAtOnce()
{
    setLimits();
    set(10, kNonePending);
    startLimits();
    use(Period::Monthly, kReachedMb, 100);
    report();
    QCOMPARE(warning(), QString());
    use(Period::Monthly, kReachedMb, 99);
    report();
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_WARNAFTER"));
    QCOMPARE(savedFlags(), QStringList({ "false", "true", "true", "true" }));
}

void tst_LimitPeriods::onlyLessTimeIsANewPeriod_data()
{
    QTest::addColumn<qint64>("before");
    QTest::addColumn<qint64>("now");
    QTest::addColumn<bool>("isNew");
    QTest::newRow("a second less") << qint64(100) << qint64(99) << true;
    QTest::newRow("nothing after a second") << qint64(1) << qint64(0) << true;
    QTest::newRow("the same") << qint64(100) << qint64(100) << false;
    QTest::newRow("a second more") << qint64(100) << qint64(101) << false;
    QTest::newRow("-1 is more than anything") << qint64(100) << qint64(-1) << false;
    QTest::newRow("anything is less than -1") << qint64(-1) << qint64(100) << true;
}

void tst_LimitPeriods::onlyLessTimeIsANewPeriod()
{
    QFETCH(qint64, before);
    QFETCH(qint64, now);
    QFETCH(bool, isNew);
    set(10, kNonePending); // both limits are off, which changes nothing here
    startLimits();
    passTime(before);
    QCOMPARE(flags(), kNonePending);
    passTime(now);
    QCOMPARE(flags(), isNew ? kAllPending : kNonePending);
    set(10, kNonePending);
    CNetInfoUIService::instance()->InitParam();
    const NetInfoData first = { 0, 0, now };
    const NetInfoData second = { 0, 0, before };
    CNetInfoUIService::instance()->UpdatePeriodFields(first, second);
    QCOMPARE(flags(), isNew ? kAllPending : kNonePending);
}

void tst_LimitPeriods::bytesMakeNoNewPeriod()
{
    set(10, kNonePending);
    startLimits();
    use(Period::Monthly, 50, 100);
    report();
    use(Period::Monthly, 0, 100);
    report();
    QCOMPARE(flags(), kNonePending);
}

void tst_LimitPeriods::theHistoryHasNoPeriods()
{
    set(10, kNonePending);
    setPeriod(Period::History);
    startLimits();
    for (const qint64 seconds : { 100, 50 }) {
        for (const Period one : { Period::Daily, Period::History, Period::Weekly, Period::Monthly })
            use(one, 0, seconds);
        report();
    }
    QCOMPARE(flags(), kNonePending);
}

void tst_LimitPeriods::onlyTheChosenRecordCounts()
{
    const Period all[] = { Period::Daily, Period::Weekly, Period::Monthly };
    for (const Period chosen : all) {
        for (const Period fallen : all) {
            CNetInfoUIService::Destroy();
            NetInfoUILogic::Destroy();
            set(10, kNonePending);
            setPeriod(chosen);
            startLimits();
            for (const Period one : all)
                use(one, 0, 100);
            report();
            use(fallen, 0, 99);
            report();
            QCOMPARE(flags(), fallen == chosen ? kAllPending : kNonePending);
        }
    }
}

void tst_LimitPeriods::everyRecurrenceHasACopyOfItsOwn()
{
    set(10, kNonePending);
    setPeriod(Period::Daily);
    CNetInfoUIService *const service = startLimits();
    use(Period::Daily, 0, 10);
    use(Period::Weekly, 0, 500);
    use(Period::Monthly, 0, 50);
    for (const Period one : { Period::Daily, Period::Weekly, Period::Monthly, Period::Daily,
                              Period::Weekly, Period::Monthly }) {
        setPeriod(one);
        service->onNetInfoSettingsChanged(0, 0, false, false);
        QCOMPARE(flags(), kNonePending);
    }
    use(Period::Daily, 0, 9);
    setPeriod(Period::Daily);
    service->onNetInfoSettingsChanged(0, 0, false, false);
    QCOMPARE(flags(), kAllPending);
}

void tst_LimitPeriods::anArmedFlagIsNotSavedAgain()
{
    startLimits();
    passTime(100);
    const QString path = fakeHost().userDataDirectory + QStringLiteral("DataUsageLimit.ini");
    QVERIFY(QFile::remove(path));
    passTime(99);
    QCOMPARE(flags(), kAllPending);
    QVERIFY(!QFile::exists(path));
}

void tst_LimitPeriods::changedSettingsAreReadAgain()
{
    setLimits();
    CNetInfoUIService *const service = startLimits();
    use(Period::Monthly, 1, 60);
    report();
    QVERIFY(dataMeter()->meterMaximum() == 100 * 1048576.0L);
    set(VLS_SIZE_VOLUME, { "250", "3" });
    QVERIFY(QMetaObject::invokeMethod(service, "onNetInfoSettingsChanged", Q_ARG(int, 7),
                                      Q_ARG(int, 8), Q_ARG(bool, false), Q_ARG(bool, false)));
    QVERIFY(dataMeter()->meterMaximum() == 250 * 1048576.0L); // of the store, not the numbers above
    QVERIFY(timeMeter()->meterMaximum() == 3 * 3600.0L);
    use(Period::Weekly, 2, 120);
    setPeriod(Period::Weekly);
    service->onNetInfoSettingsChanged(0, 0, true, true);
    QVERIFY(dataMeter()->meterValue() == 2 * 1048576.0L);
    QVERIFY(timeMeter()->meterValue() == 120.0L);
}

void tst_LimitPeriods::changedSettingsArmNothing()
{
    setLimits();
    CNetInfoUIService *const service = startLimits();
    use(Period::Monthly, kReachedMb, kReachedSeconds);
    report();
    closeWarning();
    const QStringList shown = { "false", "true", "true", "false" };
    QCOMPARE(savedFlags(), shown);
    const WarningWatch watch;
    service->onNetInfoSettingsChanged(100, 2, true, true);
    set(VLS_SIZE_VOLUME, { "99" });
    service->onNetInfoSettingsChanged(99, 2, true, true);
    QCOMPARE(watch.texts, QStringList());
    QCOMPARE(flags(), shown);
    QCOMPARE(savedFlags(), shown);
}

void tst_LimitPeriods::changedSettingsMayWarnAtOnce()
{
    setLimits();
    CNetInfoUIService *const service = startLimits();
    use(Period::Monthly, 50, 0);
    report();
    QCOMPARE(warning(), QString());
    set(VLS_SIZE_VOLUME, { "50" });
    service->onNetInfoSettingsChanged(50, 2, true, true);
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_WARNAFTER"));
}

void tst_LimitPeriods::theFlagsAreReadAgainWithTheSettings()
{
    setLimits();
    set(10, kNonePending);
    CNetInfoUIService *const service = startLimits();
    use(Period::Monthly, kReachedMb, 0);
    report();
    QCOMPARE(warning(), QString());
    set(10, { "true" });
    report();
    QCOMPARE(warning(), QString()); // not before they are read again
    service->onNetInfoSettingsChanged(0, 0, false, false);
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_WARNAFTER"));
}

QTEST_MAIN(tst_LimitPeriods)
#include "tst_limitperiods.moc"
