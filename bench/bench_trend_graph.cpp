// The trend graph beside plotting libraries: one more sample pair and its repaint, in a shown
// window on the offscreen platform. All draw into memory; none has a graphics card.

#include <QApplication>
#include <QFont>
#include <QLoggingCategory>

#include <host/Change.h>
#include <host/CommonUtils.h>
#include <host/TagUnits.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <set>
#include <string>

#include "BenchRatios.h"
#include "FakeSdk.h"
#include "GraphPeers.h"
#include "GraphStage.h"
#include "HostPaths.h"
#include "Languages.h"
#include "NetInfoGraphConfigParse.h"
#include "NetInfoGraphRules.h"
#include "NetInfoUILogic.h"
#include "QtCompat.h"

namespace {

constexpr int kUsualHistory = 1081; // pairs
constexpr int kHistories[] = { 60, kUsualHistory, 10000, 100000 };
constexpr int kShortRun = 20; // frames until a history that does not fill the plot starts anew

const QSize kSmall(600, 300);
const QSize kLarge(1920, 1080);

using MakePeer = std::function<std::unique_ptr<GraphPeer>(const GraphView &)>;

[[nodiscard]] QString text(const char *key)
{
    return Change::tr(QLatin1String("NetInfoUIExPlugin"), QLatin1String(key));
}

void takeProfileColours(GraphView &view)
{
    QVector<NetInfoColourConfig> colours;
    QVector<NetInfoFontConfig> fonts;
    NetInfoGraphConfigParse::GetInstance()->GetSettingsFromXML(colours, fonts);
    if (colours.size() < 5)
        qFatal("no profile in %s", NETINFO_BENCH_LIBRARY_PATH);
    const auto colour = [&colours](int position) {
        return QtCompat::namedColour(NetInfoRules::profileColourName(colours.at(position).color));
    };
    view.background = colour(0);
    view.uploadColour = colour(2);
    view.downloadColour = colour(3);
    view.ink = colour(4);
}

void takeTexts(GraphView &view)
{
    QVector<TagUnits> units;
    NetInfoUILogic::Instance()->GetSpeedUnitData(units);
    view.caption = text("IDS_TRENDS_SPEED")
        + CommonUtils::SpeedUnitToString(units, QLatin1String("NetInfoUIExPlugin"));
    view.upload = text("IDS_TRENDS_UPLOAD_SPEED");
    view.download = text("IDS_TRENDS_DOWNLOAD_SPEED");
}

//! What a window of \a size shows of \a history pairs.
[[nodiscard]] GraphView viewOf(const QSize &size, int history)
{
    GraphView view;
    view.size = size;
    const QRect area(QPoint(0, 0), size);
    constexpr int labelWidth = 0; // three digits fit beside the plot
    constexpr int plenty = 100000;
    const NetInfoRules::GraphCurveArea curves = NetInfoRules::graphCurveArea(
        NetInfoRules::graphPlot(area), area, labelWidth, GraphSamples::kScale, false);
    view.room = NetInfoRules::visibleSamples(curves, plenty);
    view.samples = NetInfoRules::visibleSamples(curves, history);
    view.first = history - view.samples;
    takeProfileColours(view);
    takeTexts(view);
    return view;
}

[[nodiscard]] std::string sizeName(const QSize &size)
{
    return std::to_string(size.width()) + 'x' + std::to_string(size.height());
}

//! The stage after its untimed first frame.
[[nodiscard]] std::unique_ptr<GraphStage> startedStage(const GraphView &view, const MakePeer &make)
{
    auto stage = std::make_unique<GraphStage>(view, make(view));
    stage->nextFrame();
    return stage;
}

//! Once for each name: the benchmark runs many times.
void checkOnce(const std::string &name, const GraphView &view, const MakePeer &make, bool hasCurves)
{
    static std::set<std::string> checked;
    if (checked.insert(name).second)
        startedStage(view, make)->check(name.c_str(), hasCurves);
}

void runFrames(benchmark::State &state, const std::string &name, const GraphView &view,
               const MakePeer &make, bool hasCurves)
{
    checkOnce(name, view, make, hasCurves);
    std::unique_ptr<GraphStage> stage = startedStage(view, make);
    const bool fills = view.samples == view.room;
    int frames = 0;
    for (auto _ : state) {
        stage->nextFrame();
        if (!fills && ++frames % kShortRun == 0) {
            state.PauseTiming();
            stage = startedStage(view, make);
            state.ResumeTiming();
        }
    }
}

void add(const std::string &name, const GraphView &view, const MakePeer &make,
         bool hasCurves = true)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [name, view, make, hasCurves](benchmark::State &state) {
                                     runFrames(state, name, view, make, hasCurves);
                                 })
        ->Unit(benchmark::kMicrosecond)
        ->MeasureProcessCPUTime(); // large pictures are copied by several threads
}

[[maybe_unused]] void addPeer(const std::string &peer, const GraphView &view,
                              std::unique_ptr<GraphPeer> (*make)(const GraphView &, PeerSettings))
{
    const std::string size = '/' + sizeName(view.size);
    add(peer + "/defaults" + size, view,
        [make](const GraphView &shown) { return make(shown, PeerSettings::Defaults); });
    add(peer + "/tuned" + size, view,
        [make](const GraphView &shown) { return make(shown, PeerSettings::Tuned); });
    add(peer + "/partial" + size, view,
        [make](const GraphView &shown) { return make(shown, PeerSettings::Partial); });
}

void addSize(const QSize &size)
{
    for (const int history : kHistories)
        add("ours/" + sizeName(size) + '/' + std::to_string(history), viewOf(size, history),
            makeTrendGraph);
    const GraphView view = viewOf(size, kUsualHistory);
    add("drawImage/" + sizeName(size), view, makePlainImage, false);
#ifdef NETINFO_BENCH_QCUSTOMPLOT
    addPeer("QCustomPlot", view, makeQCustomPlot);
#endif
#ifdef NETINFO_BENCH_QWT
    addPeer("Qwt", view, makeQwt);
#endif
#ifdef NETINFO_BENCH_CHARTS
    addPeer("QtCharts", view, makeCharts);
#endif
}

//! The bounds of one size: how many times slower the tuned libraries are at least. They hold for
//! Qt 5, for which there are all of them; with another Qt those that are there are only reported.
struct SizeTargets
{
    QSize size;
    double qCustomPlot;
    double qwt;
    double charts;
    double image; //!< ours to a plain image, at most; 0: only reported
};

void appendRatios(const SizeTargets &targets, std::vector<BenchRatio> &ratios)
{
    const std::string size = sizeName(targets.size);
    const std::string ours = "ours/" + size + '/';
    const std::string usual = ours + std::to_string(kUsualHistory);
    const std::pair<const char *, double> peers[] = { { "QCustomPlot", targets.qCustomPlot },
                                                      { "Qwt", targets.qwt },
                                                      { "QtCharts", targets.charts } };
    for (const auto &[peer, atLeast] : peers) {
        const std::string name = peer;
        const double judged = QT_VERSION < 0x060000 ? atLeast : 0;
        ratios.push_back(
            { size + ": tuned " + name + " / ours", name + "/tuned/" + size, usual, judged, 0 });
        ratios.push_back({ size + ": tuned " + name + " drawing changes only / ours",
                           name + "/partial/" + size, usual, 0, 0 });
        ratios.push_back({ size + ": " + name + " at its defaults / ours",
                           name + "/defaults/" + size, usual, 0, 0 });
    }
    for (const int history : kHistories) {
        constexpr double kMostGrowth = 1.2;
        if (history == kUsualHistory)
            continue;
        ratios.push_back({ size + ": ours with " + std::to_string(history) + " pairs / with "
                               + std::to_string(kUsualHistory),
                           ours + std::to_string(history), usual, 0,
                           history == 100000 ? kMostGrowth : 0 });
    }
    ratios.push_back(
        { size + ": ours / a plain drawImage", usual, "drawImage/" + size, 0, targets.image });
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QFont font = QApplication::font();
    font.setPixelSize(11); // the trend graph's, for the libraries' texts too
    QApplication::setFont(font);
    QLoggingCategory::setFilterRules(QLatin1String("*.debug=false")); // as the host runs it
    resetFakeSdk();
    HostPaths::setLibraryPath(QLatin1String(NETINFO_BENCH_LIBRARY_PATH));
    const Languages languages(QLatin1String(NETINFO_BENCH_LANG));
    if (!languages.hasEnglish())
        qFatal("no texts in %s", NETINFO_BENCH_LANG);
    if (NetInfoUILogic::Instance()->Init() != 0)
        qFatal("no configuration in %s", NETINFO_BENCH_LIBRARY_PATH);

    std::printf("Qt %s; libraries beside the trend graph: %s\n", qVersion(), NETINFO_BENCH_PEERS);
    addSize(kSmall);
    addSize(kLarge);
    std::vector<BenchRatio> ratios;
    appendRatios({ kSmall, 4, 3, 20, 6 }, ratios);
    appendRatios({ kLarge, 3, 1.3, 10, 0 }, ratios);
    const int result = runBenchmarks(argc, argv, ratios);
    NetInfoUILogic::Destroy();
    NetInfoGraphConfigParse::OnDestroy();
    return result;
}
