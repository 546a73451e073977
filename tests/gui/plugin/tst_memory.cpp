// The n-th allocation that may fail does: every builder stops with its line and nothing crashes.

#include <QTreeWidget>
#include <QtTest>

#include <cstdlib>
#include <new>

#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"
#include "PluginTest.h"

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
    set(VLS_CHK_VOLUME, { "true", "true", "0", "0" }); // every report warns
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
