// The n-th allocation that may fail does: every builder stops with its line and nothing crashes.

#include <QTreeWidget>
#include <QtTest>

#include <cstdlib>
#include <new>

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
};

void tst_Memory::aFailedAllocationIsLogged_data()
{
    QTest::addColumn<int>("failAt");
    QTest::addColumn<QString>("line");
    const QString page = QStringLiteral("createMainWidget: Memory not allocated for a Widget");
    const QString left = QStringLiteral("createLeftWidget: Memory not allocated for widget");
    const QString tree = QStringLiteral("createStatisticsWidget: Memory not allocated for widget");
    const QString menu
        = QStringLiteral("createRightClickActions: Memory not allocated for a Widget");
    QTest::newRow("main widget") << 1 << page;
    QTest::newRow("splitter") << 2 << page;
    QTest::newRow("page layout") << 3 << page;
    QTest::newRow("left area") << 4 << left;
    QTest::newRow("left layout") << 5 << left;
    QTest::newRow("tree") << 6 << tree;
    QTest::newRow("delegate") << 7 << tree;
    QTest::newRow("reset action") << 8 << menu;
    QTest::newRow("expand action") << 9 << menu;
    QTest::newRow("collapse action") << 10 << menu;
    QTest::newRow("none") << 11 << QString();
}

void tst_Memory::aFailedAllocationIsLogged()
{
    QFETCH(int, failAt);
    QFETCH(QString, line);
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    m_log->takeLines();
    g_failAt = failAt;
    QVERIFY(service->Init());
    const int left = g_failAt;
    g_failAt = 0;
    QCOMPARE(left, line.isEmpty() ? 1 : 0); // ten allocations may fail, no more
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

QTEST_MAIN(tst_Memory)
#include "tst_memory.moc"
