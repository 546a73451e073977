// Paints frames of the trend graph, for a counter of instructions: graph_frames COUNT. Each frame
// is one sample pair and one whole repaint at 600 x 300 with 1081 samples in the history.

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <cstdlib>

#include "FakeSdk.h"
#include "NetInfoGraphWidget.h"
#include "NetInfoUILogic.h"
#include "PluginFolder.h"

namespace {

//! The sample of step \a step, between 0 and 1000.
double sample(unsigned step)
{
    return 500 + 400 * ((step * 37) % 100) / 100.0 - (step / 20) % 400;
}

void paintFrame(GraphWidget &graph, unsigned step)
{
    graph.DrawGraph(sample(step) / 4, sample(step));
    graph.repaint();
}

} // namespace

//! What is counted.
extern "C" __attribute__((noinline)) void measuredFrames(GraphWidget &graph, int count)
{
    for (int i = 0; i < count; ++i)
        paintFrame(graph, unsigned(i));
}

int main(int argc, char **argv)
{
    const int count = argc > 1 ? std::atoi(argv[1]) : 0;
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QLatin1String("*.debug=false"));
    resetFakeSdk();
    PluginFolder folder;
    folder.useShippedFiles();
    NetInfoUILogic::Instance()->Init();
    {
        GraphWidget graph;
        graph.resize(600, 300);
        graph.show();
        for (unsigned i = 0; i < 1081; ++i)
            graph.DrawGraph(sample(i) / 4, sample(i));
        QApplication::processEvents();
        graph.repaint();
        measuredFrames(graph, count);
    }
    NetInfoUILogic::Destroy();
    std::printf("Qt %s\n", qVersion());
    return 0;
}
