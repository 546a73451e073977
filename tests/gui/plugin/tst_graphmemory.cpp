// What the trend graph's histories take, and a year of samples.

#include <QScreen>
#include <QtTest>

#include <malloc.h>

#include <cstdio>

#include "GraphTest.h"

namespace {

constexpr int kYear = 365 * 24 * 60 * 60; // samples, one a second
constexpr int kPairs = 200000;

//! Bytes of the heap that are in use.
size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace

class tst_GraphMemory : public GraphTest
{
    Q_OBJECT
private slots:
    void aPairTakesWhatTheTwoListsTake();
    void aYearPaintsAsMuchAsAnHour();

private:
    [[nodiscard]] size_t heapOfLists();
    [[nodiscard]] size_t heapOfGraph();
};

size_t tst_GraphMemory::heapOfLists()
{
    const size_t before = heapInUse();
    QList<double> upload;
    QList<double> download;
    const int limit = QGuiApplication::primaryScreen()->geometry().height();
    for (int i = 0; i < kPairs; ++i) {
        for (int drop = NetInfoRules::entriesToDrop(int(upload.size()), limit); drop > 0; --drop)
            upload.removeLast();
        upload.prepend(i);
        download.prepend(i);
    }
    return heapInUse() - before;
}

size_t tst_GraphMemory::heapOfGraph()
{
    make();
    QImage target(m_graph->size(), QImage::Format_RGB32);
    m_graph->DrawGraph(kPairs, kPairs);
    addSamples(2000); // more than are shown
    m_graph->render(&target);
    m_log->dropLines();
    const size_t before = heapInUse();
    for (int i = 0; i < kPairs; ++i) {
        m_graph->DrawGraph(i, i);
        if (i % 1000 == 0) {
            m_graph->render(&target);
            m_log->dropLines();
        }
    }
    return heapInUse() - before;
}

void tst_GraphMemory::aPairTakesWhatTheTwoListsTake()
{
    const size_t lists = heapOfLists();
    const size_t graph = heapOfGraph();
    QVERIFY(lists >= kPairs * sizeof(double));
    std::printf("bytes for %d pairs: two lists %zu, graph %zu\n", kPairs, lists, graph);
    QVERIFY(graph <= lists + 4096);
}

void tst_GraphMemory::aYearPaintsAsMuchAsAnHour()
{
    make();
    for (int i = 0; i < 60 * 60; ++i)
        m_graph->DrawGraph(i % 60, i % 47);
    const auto hour = record();
    QVERIFY(hour->lines.size() > 400);
    for (int i = 60 * 60; i < kYear; ++i)
        m_graph->DrawGraph(i % 60, i % 47);
    const auto year = record();
    QCOMPARE(year->lines.size(), hour->lines.size());
    QCOMPARE(year->texts.size(), hour->texts.size());
    QVERIFY(!image().isNull());
}

QTEST_MAIN(tst_GraphMemory)
#include "tst_graphmemory.moc"
