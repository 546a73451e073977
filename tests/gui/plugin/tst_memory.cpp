// The n-th allocation that may fail does: every builder stops with its line and nothing crashes.

#include <QTreeWidget>
#include <QtTest>

#include <cstdlib>
#include <new>

#include "NetInfoUILogic.h"
#include "PluginTest.h"
#include "WarnPrompt.h"

namespace {

int g_failAt = 0; // counts down at each allocation that may fail; 0 lets all through

} // namespace

// Only the plug-in's builders ask in this form; everything else is untouched.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    if (g_failAt > 0 && --g_failAt == 0)
        return nullptr;
    return std::malloc(size);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, const std::nothrow_t &) noexcept
{
    std::free(memory);
}

void *operator new(std::size_t size)
{
    if (void *const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

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
    QTest::newRow("configuration reader") << 2 << QString();
    QTest::newRow("main widget") << 3 << page;
    QTest::newRow("page layout") << 4 << page;
    QTest::newRow("splitter") << 5 << page;
    QTest::newRow("warning prompt") << 6 << QString();
    QTest::newRow("left area") << 7 << left;
    QTest::newRow("left layout") << 8 << left;
    QTest::newRow("tree") << 9 << tree;
    QTest::newRow("delegate") << 10 << tree;
    QTest::newRow("transfer item") << 11 << tree;
    QTest::newRow("statistics item") << 12 << tree;
    for (int row = 13; row < 30; ++row)
        QTest::addRow("row %d", row) << row << QString();
    for (int part = 30; part < 40; ++part)
        QTest::addRow("part %d of the limit area", part) << part << limits;
    QTest::newRow("graph") << 40 << graph;
    QTest::newRow("profile reader") << 41 << QString();
    QTest::newRow("reset action") << 42 << menu;
    QTest::newRow("expand action") << 43 << menu;
    QTest::newRow("collapse action") << 44 << menu;
    QTest::newRow("none") << 45 << QString();
}

void tst_Memory::aFailedAllocationIsLogged()
{
    QFETCH(int, failAt);
    QFETCH(QString, line);
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    m_log->takeLines();
    if (failAt == 2)
        m_log->expectWarning(QStringLiteral("NetInfoUILogic.cpp: Init: Out of Memory"));
    g_failAt = failAt;
    QVERIFY(service->Init());
    const int left = g_failAt;
    g_failAt = 0;
    QCOMPARE(left, failAt == 45 ? 1 : 0); // 44 allocations may fail, no more
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
    for (int failAt = 1; failAt < 50; ++failAt) { // the data meter is on the operator page
        delete widget("NetInfoUIPlugin_WidgetParent");
        g_failAt = failAt;
        QVERIFY(service->Init());
        g_failAt = 0;
        service->Notify(320, 0, 0);
        QVERIFY(widget("NetInfoUIPlugin_ProgressDatavolume"));
    }
    m_log->dropLines();
    QVERIFY(widget("NetInfoUIPlugin_WidgetVolumeLimit")); // the last time nothing failed
}

QTEST_MAIN(tst_Memory)
#include "tst_memory.moc"
