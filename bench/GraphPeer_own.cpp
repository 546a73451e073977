// The trend graph itself, and the least that a widget of its size can do.

#include <QImage>
#include <QPainter>
#include <QWidget>

#include "GraphPeers.h"
#include "NetInfoGraphRules.h"
#include "NetInfoGraphWidget.h"

namespace {

class TrendGraph : public GraphPeer
{
public:
    explicit TrendGraph(const GraphView &view)
    {
        for (int i = 0; i < view.first + view.samples; ++i)
            append(GraphSamples::at(i)); // the scale grows with the first one alone
    }

    QWidget &window() override
    {
        return m_graph;
    }
    void append(const GraphSamples::Pair &pair) override
    {
        m_graph.DrawGraph(pair.upload, pair.download);
        ++m_history;
    }
    int shownSamples() const override
    {
        constexpr int labelWidth = 0; // three digits fit beside the plot
        const QRect area = m_graph.rect();
        return NetInfoRules::visibleSamples(
            NetInfoRules::graphCurveArea(NetInfoRules::graphPlot(area), area, labelWidth,
                                         GraphSamples::kScale, false),
            m_history);
    }

private:
    GraphWidget m_graph;
    int m_history = 0;
};

class ImageWidget : public QWidget
{
public:
    explicit ImageWidget(const GraphView &view)
        : m_image(view.size, QImage::Format_RGB32)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        m_image.fill(view.background);
        QPainter painter(&m_image);
        painter.fillRect(m_image.rect(), QBrush(view.downloadColour, Qt::Dense5Pattern));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawImage(0, 0, m_image);
    }

private:
    QImage m_image;
};

class PlainImage : public GraphPeer
{
public:
    explicit PlainImage(const GraphView &view)
        : m_widget(view)
    {
    }

    QWidget &window() override
    {
        return m_widget;
    }
    void append(const GraphSamples::Pair &) override
    {
        m_widget.update();
    }
    int shownSamples() const override
    {
        return 0;
    }

private:
    ImageWidget m_widget;
};

} // namespace

std::unique_ptr<GraphPeer> makeTrendGraph(const GraphView &view)
{
    return std::make_unique<TrendGraph>(view);
}

std::unique_ptr<GraphPeer> makePlainImage(const GraphView &view)
{
    return std::make_unique<PlainImage>(view);
}
