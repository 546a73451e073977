#include <qcustomplot.h>

#include <algorithm>

#include "GraphPeers.h"

namespace {

[[nodiscard]] QSharedPointer<QCPAxisTicker> fixedTicker(double step)
{
    const QSharedPointer<QCPAxisTickerFixed> ticker(new QCPAxisTickerFixed);
    ticker->setTickStep(step);
    return ticker;
}

//! Two graphs with legend and axes; the data's keys are the samples' numbers.
class QCustomPlotPeer : public GraphPeer
{
public:
    explicit QCustomPlotPeer(const GraphView &view);

    QWidget &window() override
    {
        return m_plot;
    }
    int shownSamples() const override
    {
        const int count = m_download->dataCount();
        return count == m_upload->dataCount() ? count : -1;
    }

protected:
    QCustomPlot m_plot;
    QCPGraph *m_download; // the plot's
    QCPGraph *m_upload;

private:
    [[nodiscard]] QCPGraph *addGraph(const QString &name, const QColor &colour,
                                     const GraphView &view, const QVector<double> &values);
};

QCustomPlotPeer::QCustomPlotPeer(const GraphView &view)
    : m_download(addGraph(view.download, view.downloadColour, view, view.downloads()))
    , m_upload(addGraph(view.upload, view.uploadColour, view, view.uploads()))
{
    m_plot.setBackground(view.background);
    m_plot.legend->setVisible(true);
    m_plot.legend->setBrush(view.background);
    m_plot.legend->setTextColor(view.ink);
    for (QCPAxis *axis : { m_plot.xAxis, m_plot.yAxis }) {
        axis->setBasePen(QPen(view.ink));
        axis->setTickPen(QPen(view.ink));
        axis->setSubTickPen(QPen(view.ink));
        axis->setTickLabelColor(view.ink);
        axis->setLabelColor(view.ink);
    }
    m_plot.yAxis->setLabel(view.caption);
    m_plot.yAxis->setRange(0, GraphSamples::kScale);
    m_plot.xAxis->setRange(0, view.samples - 1);
}

QCPGraph *QCustomPlotPeer::addGraph(const QString &name, const QColor &colour,
                                    const GraphView &view, const QVector<double> &values)
{
    QCPGraph *const graph = m_plot.addGraph();
    graph->setName(name);
    graph->setPen(QPen(colour));
    graph->setData(view.positions(), values, true);
    return graph;
}

//! As in the documentation's real-time example: add, drop what has left, move the axis, replot.
class DefaultQCustomPlot : public QCustomPlotPeer
{
public:
    explicit DefaultQCustomPlot(const GraphView &view)
        : QCustomPlotPeer(view)
        , m_next(view.samples)
        , m_samples(view.samples)
    {
    }

    void append(const GraphSamples::Pair &pair) override
    {
        m_download->addData(m_next, pair.download);
        m_upload->addData(m_next, pair.upload);
        ++m_next;
        m_download->data()->removeBefore(m_next - m_samples);
        m_upload->data()->removeBefore(m_next - m_samples);
        m_plot.xAxis->setRange(m_next - m_samples, m_next - 1);
        m_plot.replot();
    }

private:
    int m_next;
    int m_samples;
};

//! No antialiasing, fixed axes and keys, values replaced in place, the plot in one buffer, the
//! replot queued.
class TunedQCustomPlot : public QCustomPlotPeer
{
public:
    explicit TunedQCustomPlot(const GraphView &view);

    void append(const GraphSamples::Pair &pair) override
    {
        shift(m_download, pair.download);
        shift(m_upload, pair.upload);
        replot();
    }

protected:
    virtual void replot()
    {
        m_plot.replot(QCustomPlot::rpQueuedReplot);
    }

private:
    static void shift(QCPGraph *graph, double newest);
};

//! The curves in a buffer of their own, on top: nothing else is drawn anew, both are copied.
class LayeredQCustomPlot : public TunedQCustomPlot
{
public:
    explicit LayeredQCustomPlot(const GraphView &view)
        : TunedQCustomPlot(view)
        , m_curves(m_plot.layer(QLatin1String("main")))
    {
        m_plot.moveLayer(m_curves, m_plot.layer(QLatin1String("legend")));
        m_plot.removeLayer(m_plot.layer(QLatin1String("overlay")));
        m_curves->setMode(QCPLayer::lmBuffered);
    }

protected:
    void replot() override
    {
        m_curves->replot();
    }

private:
    QCPLayer *m_curves; // the plot's
};

TunedQCustomPlot::TunedQCustomPlot(const GraphView &view)
    : QCustomPlotPeer(view)
{
    m_plot.setNotAntialiasedElements(QCP::aeAll);
    m_plot.setPlottingHints(QCP::phCacheLabels | QCP::phFastPolylines);
    m_plot.layer(QLatin1String("overlay"))->setMode(QCPLayer::lmLogical); // no buffer of its own
    m_plot.xAxis->setTicker(fixedTicker(view.columnStep()));
    m_plot.yAxis->setTicker(fixedTicker(GraphView::kLabelStep));
    m_plot.xAxis->setTickLabels(false); // the trend graph has none either
    for (QCPAxis *axis : { m_plot.xAxis, m_plot.yAxis }) {
        axis->setSubTicks(false);
        axis->grid()->setPen(QPen(view.ink.darker(), 0)); // solid: dots take longer
        axis->grid()->setZeroLinePen(Qt::NoPen);
    }
    for (QCPGraph *graph : { m_download, m_upload })
        graph->setAdaptiveSampling(false); // there is less than one sample to a pixel
}

void TunedQCustomPlot::shift(QCPGraph *graph, double newest)
{
    const auto last = graph->data()->end() - 1;
    for (auto it = graph->data()->begin(); it != last; ++it)
        it->value = (it + 1)->value;
    last->value = newest;
}

} // namespace

std::unique_ptr<GraphPeer> makeQCustomPlot(const GraphView &view, PeerSettings settings)
{
    if (settings == PeerSettings::Tuned)
        return std::make_unique<TunedQCustomPlot>(view);
    if (settings == PeerSettings::Partial)
        return std::make_unique<LayeredQCustomPlot>(view);
    return std::make_unique<DefaultQCustomPlot>(view);
}
