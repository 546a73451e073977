// The n-th allocation that may fail does: every builder stops with its line and nothing crashes.

#include <QTreeWidget>
#include <QtTest>

#include "FailingAllocator.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"
#include "PluginTest.h"
#include "WarnPrompt.h"

class tst_Memory : public PluginTest
{
    Q_OBJECT
private slots:
    void aFailedAllocationIsLogged_data();
    void aFailedAllocationIsLogged();
    void aMissingPieceOfTheWarningIsNumbered_data();
    void aMissingPieceOfTheWarningIsNumbered();
    void aRebuiltNormalPageMayFail();
};

void tst_Memory::aFailedAllocationIsLogged_data()
{
    QTest::addColumn<int>("failAt");
    QTest::addColumn<QString>("line");
    const QString page = QStringLiteral("createMainWidget: Memory not allocated for a Widget");
    const QString left = QStringLiteral("createLeftWidget: Memory not allocated for widget");
    const QString tree = QStringLiteral("createStatisticsWidget: Memory not allocated for widget");
    const QString limits
        = QStringLiteral("createVolumeLimitWidget: Memory not allocated for widget");
    const QString menu
        = QStringLiteral("createRightClickActions: Memory not allocated for a Widget");
    const QString graph = QStringLiteral("createGraphWidget: Memory not allocated for a widget");
    QTest::newRow("statistics source") << 1 << page;
    QTest::newRow("settings page") << 2 << QString();
    QTest::newRow("configuration reader") << 3 << QString();
    QTest::newRow("main widget") << 4 << page;
    QTest::newRow("page layout") << 5 << page;
    QTest::newRow("splitter") << 6 << page;
    QTest::newRow("warning prompt") << 7 << QString();
    QTest::newRow("left area") << 8 << left;
    QTest::newRow("left layout") << 9 << left;
    QTest::newRow("tree") << 10 << tree;
    QTest::newRow("delegate") << 11 << tree;
    QTest::newRow("transfer item") << 12 << tree;
    QTest::newRow("statistics item") << 13 << tree;
    for (int row = 14; row < 31; ++row)
        QTest::addRow("row %d", row) << row << QString();
    for (int part = 31; part < 41; ++part)
        QTest::addRow("part %d of the limit area", part) << part << limits;
    QTest::newRow("graph") << 41 << graph;
    QTest::newRow("profile reader") << 42 << QString();
    QTest::newRow("reset action") << 43 << menu;
    QTest::newRow("expand action") << 44 << menu;
    QTest::newRow("collapse action") << 45 << menu;
    QTest::newRow("none") << 46 << QString();
}

void tst_Memory::aFailedAllocationIsLogged()
{
    QFETCH(int, failAt);
    QFETCH(QString, line);
    set(VLS_CHK_VOLUME, { "true", "true", "0", "0" }); // every report warns
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    m_log->takeLines();
    if (failAt == 3)
        m_log->expectWarning(QStringLiteral("NetInfoUILogic.cpp: Init: Out of Memory"));
    g_failAt = failAt;
    QVERIFY(service->Init());
    const int left = g_failAt;
    g_failAt = 0;
    QCOMPARE(left, failAt == 46 ? 1 : 0); // 45 allocations may fail, no more
    const QStringList failures = m_log->takeLines().filter(QStringLiteral("not allocated"));
    if (line.isEmpty())
        QCOMPARE(failures, QStringList());
    else
        QCOMPARE(failures, QStringList("<time>: " + kSource + ": " + line));
    show();
    sendStatisticsEvent(true);
    service->Notify(320, 0, 0);
    service->Notify(837, 0, 0);
}

void tst_Memory::aMissingPieceOfTheWarningIsNumbered_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("dialog") << 798;
    QTest::newRow("main widget") << 799;
    QTest::newRow("Disconnect button") << 800;
    QTest::newRow("label") << 801;
    QTest::newRow("check box") << 802;
    QTest::newRow("OK button") << 803;
    QTest::newRow("vertical layout") << 804;
    QTest::newRow("button row") << 805;
    QTest::newRow("none") << 806;
}

void tst_Memory::aMissingPieceOfTheWarningIsNumbered()
{
    QFETCH(int, number);
    const QString null = QStringLiteral("Arg is NULL: ");
    for (QWidget *parent : { m_window.data(), static_cast<QWidget *>(nullptr) }) {
        fakeSdk().connections = 1;
        WarnPrompt prompt;
        g_failAt = number - 797;
        prompt.ShowWarnDlg(parent, QStringLiteral("Used"));
        const int left = g_failAt;
        g_failAt = 0;
        QCOMPARE(left, number == 806 ? 1 : 0); // eight pieces, no more
        const QString line
            = QStringLiteral("%1<time>: %2: createWarnDlg %3").arg(null, kSource).arg(number);
        QCOMPARE(m_log->takeLines().filter(null),
                 number == 806 ? QStringList() : QStringList(line));
        const QWidget *const dialog = widget("WarnDlg_ExtendedDlg");
        QCOMPARE(dialog && dialog->isVisible(), number != 798);
        if (const QWidget *const main = widget("WarnDlg_WidgetMain"))
            QCOMPARE(main->parentWidget(), number == 806 ? dialog : parent);
        prompt.ShowWarnDlg(parent, QStringLiteral("Used again"));
        QCOMPARE(m_log->takeLines().filter(null), QStringList()); // built once
        prompt.onDisConnectButtonClicked();
        prompt.onOkButtonClicked();
    }
    QVERIFY(m_window->children().isEmpty());
}

void tst_Memory::aRebuiltNormalPageMayFail()
{
    CNetInfoUIService *const service = start();
    show();
    int left = 0;
    for (int failAt = 1; left == 0; ++failAt) {
        delete widget("NetInfoUIPlugin_WidgetParent"); // the operator page keeps the data meter
        g_failAt = failAt;
        QVERIFY(service->Init());
        left = g_failAt;
        g_failAt = 0;
        sendStatisticsEvent(true);
        service->Notify(320, 0, 0);
        m_log->dropLines();
    }
    QVERIFY(widget("NetInfoUIPlugin_ProgressVolume"));
}

QTEST_MAIN(tst_Memory)
#include "tst_memory.moc"
