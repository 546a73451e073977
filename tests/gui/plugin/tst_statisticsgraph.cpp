// The trend graph on the normal page: where it sits, what feeds it, and when it is not there.

#include <QApplication>
#include <QSplitter>
#include <QTreeWidget>
#include <QtTest>

#include <limits>
#include <utility>

#include "NetInfoGraphWidget.h"
#include "PaintRecorder.h"
#include "PluginTest.h"

class tst_StatisticsGraph : public PluginTest
{
    Q_OBJECT
private slots:
    void theGraphIsTheRightPane();
    void inRightToLeftItIsTheLeftPane();
    void switchedOffItIsNoPaneAndIsNeverSeen();
    void anEventFeedsSpeedsInTheFirstUnit_data();
    void anEventFeedsSpeedsInTheFirstUnit();
    void switchedOffItIsNotFed();
    void itIsFedBeforeTheStoredFigures();
    void withoutATransferNodeItIsNotFed();
    void aLanguageReachesTheGraph();
    void theGraphMayDieBeforeThePlugin();
    void aSecondInitMakesNoSecondGraph();
    void destroyingTakesTheGraphAlong();

private:
    [[nodiscard]] GraphWidget *graph() const;
    void writeUnits(const QByteArray &items);
    [[nodiscard]] QSharedPointer<PaintRecorder> record() const;
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] int uploadSegments() const;
};

GraphWidget *tst_StatisticsGraph::graph() const
{
    return qobject_cast<GraphWidget *>(widget("NetInfoUIPlugin_WidgetGraph"));
}

void tst_StatisticsGraph::writeUnits(const QByteArray &items)
{
    QByteArray switches;
    for (const QString &name : PluginFolder::allSwitches())
        switches += "<item name=\"" + name.toUtf8() + "\" value=\"true\"/>";
    m_folder->writeConfig(PluginFolder::document("<function>" + switches + "</function><speedunit>"
                                                 + items + "</speedunit>"));
}

QSharedPointer<PaintRecorder> tst_StatisticsGraph::record() const
{
    graph()->setFixedSize(420, 300); // rendering lays the hidden page out
    const QSharedPointer<PaintRecorder> recorder(new PaintRecorder(graph()->size()));
    graph()->render(recorder.data());
    return recorder;
}

QStringList tst_StatisticsGraph::texts() const
{
    return record()->textList();
}

int tst_StatisticsGraph::uploadSegments() const
{
    return int(record()->linesOf(QColor(255, 255, 0)).size()) - 1; // less the legend's
}

void tst_StatisticsGraph::theGraphIsTheRightPane()
{
    start();
    auto *const splitter = qobject_cast<QSplitter *>(widget("NetInfoUIPlugin_SplitterPane"));
    QVERIFY(splitter && graph());
    QCOMPARE(splitter->count(), 2);
    QCOMPARE(splitter->widget(1), static_cast<QWidget *>(graph()));
    m_window->resize(900, 500);
    m_window->show();
    QRect rect(0, 0, 900, 500);
    CNetInfoUIService::instance()->ShowWindow(m_window.data(), rect);
    QVERIFY(!graph()->isVisible()); // the page is kept hidden
    widget("NetInfoUIPlugin_WidgetParent")->show();
    QVERIFY(graph()->isVisible());
    const int tree = splitter->widget(0)->width();
    QVERIFY2(tree >= 280 && tree < graph()->width(), qPrintable(QString::number(tree)));
    QVERIFY(graph()->x() > splitter->widget(0)->x());
    m_window->resize(1200, 500);
    CNetInfoUIService::instance()->FitSize(rect = QRect(0, 0, 1200, 500));
    QApplication::processEvents();
    QCOMPARE(splitter->widget(0)->width(), tree); // more room shows more of the past
}

void tst_StatisticsGraph::inRightToLeftItIsTheLeftPane()
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    QVERIFY(graph()->isVisible());
    auto *const splitter = qobject_cast<QSplitter *>(widget("NetInfoUIPlugin_SplitterPane"));
    QVERIFY(graph()->x() < splitter->widget(0)->x());
}

void tst_StatisticsGraph::switchedOffItIsNoPaneAndIsNeverSeen()
{
    start({ QStringLiteral("SHOWGRAPH") });
    QVERIFY(!graph());
    auto *const splitter = qobject_cast<QSplitter *>(widget("NetInfoUIPlugin_SplitterPane"));
    QCOMPARE(splitter->count(), 1);
    show();
    QWidget *const page = widget("NetInfoUIPlugin_WidgetParent");
    page->show();
    for (const GraphWidget *const hidden : page->findChildren<GraphWidget *>())
        QVERIFY(!hidden->isVisible());
}

void tst_StatisticsGraph::anEventFeedsSpeedsInTheFirstUnit_data()
{
    QTest::addColumn<QByteArray>("units");
    QTest::addColumn<quint32>("up");
    QTest::addColumn<quint32>("down");
    QTest::addColumn<QString>("scale");
    const QByteArray bytes = "<item name=\"B\" value=\"1\" type=\"1\"/>";
    const QByteArray kilobytes = "<item name=\"K\" value=\"1024\" type=\"1024\"/>";
    const QByteArray none = "<item name=\"N\" value=\"0\" type=\"1\"/>";
    QTest::newRow("by one") << bytes << 12U << 130U << "180";
    QTest::newRow("the first unit counts") << bytes + kilobytes << 0U << 61U << "120";
    QTest::newRow("by 1024") << kilobytes << 0U << 61U * 1024 << "120";
    QTest::newRow("not quite 61") << kilobytes << 0U << 61U * 1024 - 1 << "60";
    QTest::newRow("an upload") << kilobytes << 500U * 1024 << 0U << "540";
    QTest::newRow("speeds are unsigned") << bytes << 0U << 4294967295U << "2147483640";
    QTest::newRow("a factor of zero") << none << 5000U << 5000U << "60";
    QTest::newRow("no units") << QByteArray() << 5000U << 5000U << "60";
}

void tst_StatisticsGraph::anEventFeedsSpeedsInTheFirstUnit()
{
    QFETCH(QByteArray, units);
    QFETCH(quint32, up);
    QFETCH(quint32, down);
    QFETCH(QString, scale);
    writeUnits(units);
    CNetInfoUIService::instance()->Init();
    fakeSdk().reports[0].uploadSpeed = up;
    fakeSdk().reports[0].downloadSpeed = down;
    QVERIFY(!texts().contains(scale) || scale == QLatin1String("60"));
    sendStatisticsEvent(true);
    QVERIFY(texts().contains(scale));
    sendStatisticsEvent(true);
    QCOMPARE(uploadSegments(), 1); // each event is a sample, also at speed zero
}

void tst_StatisticsGraph::switchedOffItIsNotFed()
{
    start({ QStringLiteral("SHOWGRAPH") });
    fakeSdk().reports[0].downloadSpeed = 500;
    sendStatisticsEvent(true);
    sendStatisticsEvent(true);
    const QWidget *const page = widget("NetInfoUIPlugin_WidgetParent");
    for (GraphWidget *const hidden : page->findChildren<GraphWidget *>()) {
        hidden->setFixedSize(420, 300);
        PaintRecorder recorder(hidden->size());
        hidden->render(&recorder);
        QVERIFY(recorder.textList().contains(QStringLiteral("60")));
        QCOMPARE(int(recorder.linesOf(QColor(255, 255, 0)).size()), 1);
    }
}

void tst_StatisticsGraph::itIsFedBeforeTheStoredFigures()
{
    start();
    fakeSdk().reports[1].result = 1; // the daily figures cannot be read
    fakeSdk().reports[0].downloadSpeed = 130;
    sendStatisticsEvent(true);
    QVERIFY(texts().contains(QStringLiteral("180")));
}

void tst_StatisticsGraph::withoutATransferNodeItIsNotFed()
{
    start();
    fakeSdk().reports[0].downloadSpeed = 130;
    delete tree();
    sendStatisticsEvent(true);
    QVERIFY(texts().contains(QStringLiteral("60")));
}

void tst_StatisticsGraph::aLanguageReachesTheGraph()
{
    CNetInfoUIService *const service = start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    QApplication::processEvents();
    m_log->takeLines();
    fakeHost().language = QStringLiteral("_xx");
    service->Notify(320, 0, 0);
    QStringList paints;
    QTRY_VERIFY(!(paints += m_log->takeLines().filter(QStringLiteral("paintEvent"))).isEmpty());
    QVERIFY(texts().contains(QStringLiteral("IDS_TRENDS_UPLOAD_SPEED_xx")));
}

void tst_StatisticsGraph::theGraphMayDieBeforeThePlugin()
{
    CNetInfoUIService *const service = start();
    show();
    delete graph();
    sendStatisticsEvent(true);
    service->Notify(320, 0, 0);
    QVERIFY(!graph());
}

void tst_StatisticsGraph::aSecondInitMakesNoSecondGraph()
{
    CNetInfoUIService *const service = start();
    const GraphWidget *const first = graph();
    service->Init();
    QCOMPARE(graph(), first);
    QCOMPARE(int(widget("NetInfoUIPlugin_WidgetParent")->findChildren<GraphWidget *>().size()), 1);
}

void tst_StatisticsGraph::destroyingTakesTheGraphAlong()
{
    start();
    show();
    CNetInfoUIService::Destroy();
    QVERIFY(!graph());
}

QTEST_MAIN(tst_StatisticsGraph)
#include "tst_statisticsgraph.moc"
