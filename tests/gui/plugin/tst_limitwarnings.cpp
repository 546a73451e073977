// The warnings of the usage limits: when they come, once in a period, and what is kept of it.

#include <QApplication>
#include <QtTest>
#include <QWindow>

#include "LimitTest.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"

namespace {

const QStringList kAllPending = { "true", "true", "true", "true" };
const QStringList kNonePending = { "false", "false", "false", "false" };

void addPeriods()
{
    QTest::addColumn<int>("period");
    QTest::newRow("daily") << int(Period::Daily);
    QTest::newRow("weekly") << int(Period::Weekly);
    QTest::newRow("monthly") << int(Period::Monthly);
    QTest::newRow("since a date") << int(Period::History);
}

} // namespace

class tst_LimitWarnings : public LimitTest
{
    Q_OBJECT
private slots:
    void eachWarningComesOnce_data();
    void eachWarningComesOnce();
    void everyPeriodWarns_data();
    void everyPeriodWarns();
    void theFlagIsSavedBeforeTheWarningOpens();
    void whatIsOffWarnsOfNothing_data();
    void whatIsOffWarnsOfNothing();
    void beforeAndAfterComeOneAfterTheOther();
    void twoInOneReportLeaveTheLaterText_data();
    void twoInOneReportLeaveTheLaterText();
    void theWarningBelongsToTheNormalPage();
    void aWarningAtTheFirstShowBlocksTheWindow();
    void flagsOutliveTheController();
    void onlyWhatChangesIsWritten();
    void theControllerMayGoWhileAWarningIsOpen();
    void theWarningGoesBeforeItsPage();
    void theWindowMayGoWhileAWarningIsOpen();
    void theNormalPageMayGoAlone();
    void theOperatorPageMayGoAlone_data();
    void theOperatorPageMayGoAlone();
    void theMetersMayGoAlone();
};

void tst_LimitWarnings::eachWarningComesOnce_data()
{
    QTest::addColumn<double>("megabytes");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("flags");
    QTest::newRow("data near") << kNearMb << qint64(0) << "IDS_BOX_WARNBEFORE"
                               << QStringList({ "true", "false", "true", "true" });
    QTest::newRow("data reached") << kReachedMb << qint64(0) << "IDS_BOX_WARNAFTER"
                                  << QStringList({ "false", "true", "true", "true" });
    QTest::newRow("time near") << 0.0 << kNearSeconds << "IDS_BOX_TIMEWARNBEFORE"
                               << QStringList({ "true", "true", "false", "true" });
    QTest::newRow("time reached") << 0.0 << kReachedSeconds << "IDS_BOX_TIMEWARNAFTER"
                                  << QStringList({ "true", "true", "true", "false" });
    QTest::newRow("fine") << kFineMb << kFineSeconds << QString() << kAllPending;
}

void tst_LimitWarnings::eachWarningComesOnce()
{
    QFETCH(double, megabytes);
    QFETCH(qint64, seconds);
    QFETCH(QString, text);
    setLimits();
    startLimits();
    use(Period::Monthly, megabytes, seconds);
    report();
    QCOMPARE(warning(), text);
    QTEST(flags(), "flags");
    QTEST(savedFlags(), "flags");
    closeWarning();
    const WarningWatch watch;
    for (int i = 0; i < 5; ++i)
        report();
    use(Period::Monthly, megabytes + 0.01, seconds);
    report();
    QCOMPARE(watch.texts, QStringList());
    QTEST(flags(), "flags");
}

void tst_LimitWarnings::everyPeriodWarns_data()
{
    addPeriods();
}

void tst_LimitWarnings::everyPeriodWarns()
{
    QFETCH(int, period);
    setLimits();
    setPeriod(Period(period));
    startLimits();
    QCOMPARE(approach(Period(period)),
             QStringList({ "IDS_BOX_WARNBEFORE", "IDS_BOX_TIMEWARNBEFORE", "IDS_BOX_WARNAFTER",
                           "IDS_BOX_TIMEWARNAFTER" }));
    QCOMPARE(savedFlags(), kNonePending);
}

void tst_LimitWarnings::theFlagIsSavedBeforeTheWarningOpens()
{
    setLimits();
    startLimits();
    const WarningWatch watch;
    for (const double megabytes : { kNearMb, kReachedMb }) {
        use(Period::Monthly, megabytes, 0);
        report();
        closeWarning();
    }
    for (const qint64 seconds : { kNearSeconds, kReachedSeconds }) {
        use(Period::Monthly, kReachedMb, seconds);
        report();
        closeWarning();
    }
    QCOMPARE(watch.savedFlags,
             QList<QStringList>({ { "true", "false", "true", "true" },
                                  { "false", "false", "true", "true" },
                                  { "false", "false", "false", "true" },
                                  kNonePending }));
}

void tst_LimitWarnings::whatIsOffWarnsOfNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("texts");
    const QString before = QStringLiteral("IDS_BOX_WARNBEFORE");
    const QString after = QStringLiteral("IDS_BOX_WARNAFTER");
    const QString timeBefore = QStringLiteral("IDS_BOX_TIMEWARNBEFORE");
    const QString timeAfter = QStringLiteral("IDS_BOX_TIMEWARNAFTER");
    const QStringList all = { before, timeBefore, after, timeAfter };
    const auto row = [](const char *name, int index, const char *value, const QStringList &texts) {
        QTest::newRow(name) << index << QString(value) << texts;
    };
    row("the data limit", VLS_CHK_VOLUME, "false", { timeBefore, timeAfter });
    row("the time limit", VLS_CHK_TIME_VOLUME, "false", { before, after });
    row("warnings before", VLS_CHK_WARN_BEFORE, "false", { after, timeAfter });
    row("warnings before, empty", VLS_CHK_WARN_BEFORE, "", { after, timeAfter });
    row("warnings before, TRUE", VLS_CHK_WARN_BEFORE, "TRUE", { after, timeAfter });
    row("warnings after", VLS_CHK_WARN_AFTER, "false", { before, timeBefore });
    row("warnings after, empty", VLS_CHK_WARN_AFTER, "", { before, timeBefore });
    row("data after, shown", 10, "false", { before, timeBefore, timeAfter });
    row("data before, shown", 11, "false", { timeBefore, after, timeAfter });
    row("time before, shown", 12, "false", { before, after, timeAfter });
    row("time after, shown", 13, "false", { before, timeBefore, after });
    row("data after, empty is to be shown", 10, "", all);
    row("data before, garbage is to be shown", 11, "FALSE", all);
    row("time before, empty is to be shown", 12, "", all);
    row("time after, garbage is to be shown", 13, "0", all);
}

void tst_LimitWarnings::whatIsOffWarnsOfNothing()
{
    QFETCH(int, index);
    QFETCH(QString, value);
    setLimits();
    set(index, { value });
    startLimits();
    QTEST(approach(Period::Monthly), "texts");
}

void tst_LimitWarnings::beforeAndAfterComeOneAfterTheOther()
{
    setLimits();
    startLimits();
    use(Period::Monthly, kNearMb, 0);
    report();
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_WARNBEFORE"));
    use(Period::Monthly, kReachedMb, 0);
    report();
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_WARNAFTER")); // in the same dialog
    closeWarning();
    use(Period::Monthly, kNearMb, 1);
    report();
    QCOMPARE(warning(), QString());
}

void tst_LimitWarnings::twoInOneReportLeaveTheLaterText_data()
{
    addPeriods();
}

void tst_LimitWarnings::twoInOneReportLeaveTheLaterText()
{
    QFETCH(int, period);
    setLimits();
    setPeriod(Period(period));
    startLimits();
    const WarningWatch watch;
    use(Period(period), kNearMb, kReachedSeconds);
    report();
    QCOMPARE(watch.texts, QStringList({ "IDS_BOX_WARNBEFORE" }));
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_TIMEWARNAFTER"));
    QCOMPARE(savedFlags(), QStringList({ "true", "false", "true", "false" }));
    int dialogs = 0;
    const QWidgetList all = QApplication::allWidgets();
    for (const QWidget *one : all)
        dialogs += one->objectName() == QLatin1String("WarnDlg_ExtendedDlg") ? 1 : 0;
    QCOMPARE(dialogs, 1);
}

void tst_LimitWarnings::theWarningBelongsToTheNormalPage()
{
    setLimits();
    startLimits();
    show();
    use(Period::Monthly, kNearMb, 0);
    report();
    QCOMPARE(widget("WarnDlg_ExtendedDlg")->parentWidget(), widget("NetInfoUIPlugin_WidgetParent"));
}

void tst_LimitWarnings::aWarningAtTheFirstShowBlocksTheWindow()
{
    setLimits();
    startLimits();
    use(Period::Monthly, kNearMb, 0);
    show(); // the normal page gets its parent after the figures are read
    const QWidget *const dialog = widget("WarnDlg_ExtendedDlg");
    QVERIFY(dialog && dialog->isVisible());
    QCOMPARE(dialog->windowHandle()->transientParent(), m_window->windowHandle());
}

void tst_LimitWarnings::flagsOutliveTheController()
{
    setLimits();
    startLimits();
    use(Period::Monthly, kReachedMb, kNearSeconds);
    report();
    const QStringList expected = { "false", "true", "false", "true" };
    QCOMPARE(savedFlags(), expected);
    CNetInfoUIService::Destroy();
    NetInfoUILogic::Destroy();
    set(10, savedFlags()); // as another process reads them
    startLimits();
    const WarningWatch watch;
    show();
    report();
    QCOMPARE(watch.texts, QStringList());
    QCOMPARE(flags(), expected);
}

void tst_LimitWarnings::onlyWhatChangesIsWritten()
{
    setLimits();
    set(10, { "yes", "", "TRUE", "0" });
    startLimits();
    use(Period::Monthly, 0, kNearSeconds);
    report();
    QCOMPARE(savedFlags(), QStringList({ "yes", "", "false", "0" }));
    use(Period::Monthly, kReachedMb, kNearSeconds);
    report();
    QCOMPARE(savedFlags(), QStringList({ "false", "", "false", "0" }));
    passTime(0);
    QCOMPARE(savedFlags(), QStringList({ "true", "", "true", "0" }));
}

void tst_LimitWarnings::theControllerMayGoWhileAWarningIsOpen()
{
    setLimits();
    startLimits();
    show();
    use(Period::Monthly, kReachedMb, 0);
    report();
    QVERIFY(!warning().isEmpty());
    CNetInfoUIService::Destroy();
    QVERIFY(!widget("WarnDlg_ExtendedDlg"));
    QVERIFY(!dataMeter());
    QVERIFY(!timeMeter());
    startLimits();
    show();
    use(Period::Monthly, kReachedMb, kNearSeconds);
    report();
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_TIMEWARNBEFORE"));
}

void tst_LimitWarnings::theWarningGoesBeforeItsPage()
{
    setLimits();
    startLimits();
    show();
    use(Period::Monthly, kReachedMb, 0);
    report();
    QStringList gone;
    for (const char *name : { "NetInfoUIPlugin_WidgetParent", "WarnDlg_ExtendedDlg" })
        connect(widget(name), &QObject::destroyed, this, [&gone, name] { gone << name; });
    CNetInfoUIService::Destroy();
    QCOMPARE(gone, QStringList({ "WarnDlg_ExtendedDlg", "NetInfoUIPlugin_WidgetParent" }));
}

void tst_LimitWarnings::theWindowMayGoWhileAWarningIsOpen()
{
    setLimits();
    CNetInfoUIService *const service = startLimits();
    show();
    use(Period::Monthly, kReachedMb, 0);
    report();
    m_window.reset(new QWidget);
    QVERIFY(!widget("WarnDlg_ExtendedDlg"));
    QVERIFY(!dataMeter());
    use(Period::Monthly, kReachedMb, kReachedSeconds);
    report();
    service->Notify(320, 0, 0);
    service->UpdateTreeItems();
    service->UpdateNewPeriodTipInfo();
    service->updateDataVolumeStrings();
    service->onNetInfoSettingsChanged(1, 1, true, true);
    service->onSetLimitButtonClicked();
    QCOMPARE(service->ShowDataColorPrompt(1e6), 0);
    QCOMPARE(service->ShowTimeColorPrompt(1e6), 0);
    QCOMPARE(savedFlags(), QStringList({ "false", "true", "true", "true" }));
    QVERIFY(service->Init());
    show();
    report();
    QCOMPARE(warning(), QStringLiteral("IDS_BOX_TIMEWARNAFTER"));
    QVERIFY(dataMeter()->meterValue() == kReachedMb * 1048576.0L);
}

void tst_LimitWarnings::theNormalPageMayGoAlone()
{
    setLimits();
    CNetInfoUIService *const service = startLimits();
    show();
    SkProgressBar *const meter = dataMeter();
    delete widget("NetInfoUIPlugin_WidgetParent");
    QCOMPARE(dataMeter(), meter);
    service->Notify(320, 0, 0);
    QVERIFY(service->Init());
    use(Period::Monthly, kNearMb, 60);
    report();
    QCOMPARE(dataMeter(), meter); // still the only one, and where it was
    QVERIFY(widget("NetInfoSettingDlg_MainWidget")->isAncestorOf(meter));
    QVERIFY(meter->meterValue() == kNearMb * 1048576.0L);
    QVERIFY(timeMeter());
    QVERIFY(timeMeter()->meterValue() == 60.0L);
    QVERIFY(widget("NetInfoUIPlugin_LabelDataVolume"));
    QVERIFY(widget("NetInfoUIPlugin_LabelTimeVolume"));
    service->Notify(320, 0, 0);
    show();
}

void tst_LimitWarnings::theOperatorPageMayGoAlone_data()
{
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<bool>("shown");
    QTest::newRow("with the data meter") << QStringList() << true;
    QTest::newRow("without it") << QStringList("DATAVOLUMELIMIT") << false;
}

void tst_LimitWarnings::theOperatorPageMayGoAlone()
{
    QFETCH(QStringList, off);
    setLimits();
    CNetInfoUIService *const service = startWith(limitItems(), off);
    show();
    QTEST(dataMeter()->isVisible(), "shown");
    delete widget("NetInfoSettingDlg_MainWidget");
    QVERIFY(!dataMeter());
    use(Period::Monthly, kNearMb, 60);
    report();
    QVERIFY(timeMeter()->meterValue() == 60.0L); // the rest goes on
    QVERIFY(service->Init());
    show();
    QVERIFY(dataMeter());
    QTEST(dataMeter()->isVisible(), "shown");
    QCOMPARE(dataMeter()->size(), QSize(228, 20));
    QVERIFY(dataMeter()->meterValue() == kNearMb * 1048576.0L);
}

void tst_LimitWarnings::theMetersMayGoAlone()
{
    setLimits();
    CNetInfoUIService *const service = startLimits();
    delete dataMeter();
    delete timeMeter();
    use(Period::Monthly, kReachedMb, kReachedSeconds);
    const WarningWatch watch;
    report();
    QCOMPARE(watch.texts, QStringList());
    QCOMPARE(service->ShowDataColorPrompt(1e6), 0);
    QCOMPARE(service->ShowTimeColorPrompt(1e6), 0);
    service->Notify(320, 0, 0);
}

QTEST_MAIN(tst_LimitWarnings)
#include "tst_limitwarnings.moc"
