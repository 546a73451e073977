// One statistics event through the plug-in: the fake SDK reports, the real source, controller, host
// core library and tree do the rest. Every event brings new figures.

#include <QApplication>
#include <QImage>
#include <QLoggingCategory>
#include <QPixmap>
#include <QTime>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <host/CommonUtils.h>

#include <benchmark/benchmark.h>

#include <memory>

#include "BenchRatios.h"
#include "FakeSdk.h"
#include "HostPaths.h"
#include "Languages.h"
#include "NetInfoLog.h"
#include "NetInfoUIService.h"
#include "StatisticsTexts.h"

namespace {

//! New figures: the speeds jump, the amounts grow.
void advanceFigures()
{
    static quint32 step = 0;
    ++step;
    FakeReport &live = fakeSdk().reports[0];
    live.uploadSpeed = (step * 7919) % 900000;
    live.downloadSpeed = (step * 104729) % 9000000;
    live.time = step;
    for (const int kind : { 0, 1, 4, 5 }) {
        FakeReport &report = fakeSdk().reports[kind];
        report.upload += live.uploadSpeed * quint64(kind + 1);
        report.download += live.downloadSpeed * quint64(kind + 1);
    }
    fakeSdk().reports[2].lastReset = 1700000000;
}

void sendNextEvent()
{
    advanceFigures();
    sendStatisticsEvent(true);
    fakeSdk().calls.clear();
    fakeSdk().historyKeys.clear();
}

//! The plug-in in a host window.
class Stage
{
public:
    explicit Stage(bool shown)
    {
        CNetInfoUIService *const service = CNetInfoUIService::instance();
        service->Init();
        m_window.resize(700, 500);
        QRect rect(0, 0, 700, 500);
        service->ShowWindow(&m_window, rect);
        m_window.show();
        m_tree = m_window.findChild<QTreeWidget *>(QLatin1String("NetInfoUIPlugin_WidgetTree"));
        if (shown) {
            service->Hide();
            m_window.findChild<QWidget *>(QLatin1String("NetInfoUIPlugin_WidgetParent"))->show();
        }
        QApplication::processEvents();
    }
    ~Stage()
    {
        CNetInfoUIService::Destroy();
    }

    //! What a row's icon costs when it is built from its file each time: the rows that get an icon
    //! with every event are the last reset and the six of the periods.
    void loadIconsNaively()
    {
        int rows = 0;
        for (QTreeWidgetItemIterator it(m_tree->topLevelItem(1)); *it && rows < 7; ++it) {
            if ((*it)->childCount() > 0)
                continue;
            const QString path = CommonUtils::GetPluginLibraryPath()
                + QLatin1String("/plugins/NetInfoUIExPlugin/Icon_09");
            (*it)->setIcon(0, QIcon(QPixmap::fromImage(QImage(path))));
            ++rows;
        }
    }

private:
    QWidget m_window;
    QTreeWidget *m_tree;
};

void runEvents(benchmark::State &state, bool shown, bool naive)
{
    Stage stage(shown);
    for (auto _ : state) {
        sendNextEvent();
        if (naive)
            stage.loadIconsNaively();
        if (shown)
            QApplication::processEvents(); // paints
    }
}

void hiddenTree(benchmark::State &state)
{
    runEvents(state, false, false);
}
BENCHMARK(hiddenTree)->Unit(benchmark::kMicrosecond);

void hiddenTreeNaiveIcons(benchmark::State &state)
{
    runEvents(state, false, true);
}
BENCHMARK(hiddenTreeNaiveIcons)->Unit(benchmark::kMicrosecond);

void shownTree(benchmark::State &state)
{
    runEvents(state, true, false);
}
BENCHMARK(shownTree)->Unit(benchmark::kMicrosecond);

void shownTreeNaiveIcons(benchmark::State &state)
{
    runEvents(state, true, true);
}
BENCHMARK(shownTreeNaiveIcons)->Unit(benchmark::kMicrosecond);

void textsAlone(benchmark::State &state)
{
    StatisticsTexts texts;
    for (auto _ : state) {
        advanceFigures();
        benchmark::DoNotOptimize(texts.format(fakeSdk()));
    }
}
BENCHMARK(textsAlone)->Unit(benchmark::kMicrosecond);

void droppedTraceLine(benchmark::State &state)
{
    for (auto _ : state)
        NETINFO_TRACE("%s: %s: %s: Entered", "bench");
}
BENCHMARK(droppedTraceLine);

void timeTextAlone(benchmark::State &state)
{
    for (auto _ : state) {
        QByteArray text
            = QTime::currentTime().toString(QLatin1String("hh:mm:ss:zzz")).toLocal8Bit();
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(timeTextAlone);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QLatin1String("*.debug=false")); // as the host runs it
    resetFakeSdk();
    HostPaths::setLibraryPath(QLatin1String(NETINFO_BENCH_LIBRARY_PATH));
    const Languages languages(QLatin1String(NETINFO_BENCH_LANG));
    if (!languages.hasEnglish())
        qFatal("no texts in %s", NETINFO_BENCH_LANG);
    return runBenchmarks(
        argc, argv,
        {
            { "naive icons / hidden tree", "hiddenTreeNaiveIcons", "hiddenTree", 6, 0 },
            { "hidden tree / its texts alone", "hiddenTree", "textsAlone", 0, 2 },
            { "time text / dropped trace line", "timeTextAlone", "droppedTraceLine", 10, 0 },
        });
}
