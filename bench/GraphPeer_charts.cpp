#include <QChart>
#include <QChartView>
#include <QLegend>
#include <QLineSeries>
#include <QPointF>
#include <QValueAxis>

#include "GraphPeers.h"

#if QT_VERSION < 0x060000
QT_CHARTS_USE_NAMESPACE
#endif

namespace {

[[nodiscard]] QVector<QPointF> points(const QVector<double> &values)
{
    QVector<QPointF> result;
    result.reserve(values.size());
    for (const double value : values)
        result.append(QPointF(double(result.size()), value));
    return result;
}

//! Two line series with axes and legend in a chart view.
class ChartsPeer : public GraphPeer
{
public:
    explicit ChartsPeer(const GraphView &view);

    QWidget &window() override
    {
        return m_view;
    }
    QWidget &canvas() override
    {
        return *m_view.viewport();
    }
    int shownSamples() const override
    {
        const int count = m_download->count();
        return count == m_upload->count() ? count : -1;
    }

protected:
    QChartView m_view;
    QChart *m_chart; // the view's; the rest is the chart's
    QLineSeries *m_download;
    QLineSeries *m_upload;
    QValueAxis *m_time;
    QValueAxis *m_speed;

private:
    [[nodiscard]] QLineSeries *addSeries(const QString &name, const QColor &colour,
                                         const QVector<double> &values);
};

ChartsPeer::ChartsPeer(const GraphView &view)
    : m_chart(m_view.chart())
    , m_download(addSeries(view.download, view.downloadColour, view.downloads()))
    , m_upload(addSeries(view.upload, view.uploadColour, view.uploads()))
{
    m_chart->createDefaultAxes();
    m_time = static_cast<QValueAxis *>(m_chart->axes(Qt::Horizontal).first());
    m_speed = static_cast<QValueAxis *>(m_chart->axes(Qt::Vertical).first());
    m_time->setRange(0, view.samples - 1);
    m_speed->setRange(0, GraphSamples::kScale);
    m_speed->setTitleText(view.caption);
    m_speed->setTitleBrush(view.ink);
    m_speed->setLabelsColor(view.ink);
    m_time->setLabelsColor(view.ink);
    m_chart->setBackgroundBrush(view.background);
    m_chart->legend()->setLabelColor(view.ink);
}

QLineSeries *ChartsPeer::addSeries(const QString &name, const QColor &colour,
                                   const QVector<double> &values)
{
    auto *const series = new QLineSeries;
    series->setName(name);
    series->replace(points(values));
    m_chart->addSeries(series);
    series->setColor(colour);
    return series;
}

//! Antialiased as in all of the documentation's examples; append, drop the oldest, move the axis.
class DefaultCharts : public ChartsPeer
{
public:
    explicit DefaultCharts(const GraphView &view)
        : ChartsPeer(view)
        , m_next(view.samples)
        , m_samples(view.samples)
    {
        m_view.setRenderHint(QPainter::Antialiasing);
    }

    void append(const GraphSamples::Pair &pair) override
    {
        m_download->append(m_next, pair.download);
        m_upload->append(m_next, pair.upload);
        ++m_next;
        m_download->remove(0);
        m_upload->remove(0);
        m_time->setRange(m_next - m_samples, m_next - 1);
    }

private:
    int m_next;
    int m_samples;
};

//! No antialiasing, no animation, fixed axes, all points replaced at once, thin lines.
class TunedCharts : public ChartsPeer
{
public:
    TunedCharts(const GraphView &view, bool changesOnly);

    void append(const GraphSamples::Pair &pair) override
    {
        shift(m_download, m_downloadPoints, pair.download);
        shift(m_upload, m_uploadPoints, pair.upload);
    }

private:
    static void shift(QLineSeries *series, QVector<QPointF> &points, double newest);

    QVector<QPointF> m_downloadPoints;
    QVector<QPointF> m_uploadPoints;
};

TunedCharts::TunedCharts(const GraphView &view, bool changesOnly)
    : ChartsPeer(view)
    , m_downloadPoints(points(view.downloads()))
    , m_uploadPoints(points(view.uploads()))
{
    m_view.setRenderHint(QPainter::Antialiasing, false);
    m_view.setOptimizationFlags(QGraphicsView::DontSavePainterState
                                | QGraphicsView::DontAdjustForAntialiasing);
    m_view.setViewportUpdateMode(changesOnly ? QGraphicsView::MinimalViewportUpdate
                                             : QGraphicsView::FullViewportUpdate);
    m_chart->setAnimationOptions(QChart::NoAnimation);
    m_chart->setDropShadowEnabled(false);
    m_chart->setBackgroundVisible(false); // the view's own, without rounded corners
    m_view.setBackgroundBrush(view.background);
    m_time->setTickCount(GraphView::kColumns + 1);
    m_speed->setTickCount(GraphView::kColumns + 1);
    m_time->setLabelsVisible(false); // the trend graph has none either
    for (QValueAxis *axis : { m_time, m_speed })
        axis->setGridLinePen(QPen(view.ink.darker(), 0));
    m_download->setPen(QPen(view.downloadColour, 0));
    m_upload->setPen(QPen(view.uploadColour, 0));
}

void TunedCharts::shift(QLineSeries *series, QVector<QPointF> &points, double newest)
{
    for (int i = 1; i < points.size(); ++i)
        points[i - 1].setY(points.at(i).y());
    points.last().setY(newest);
    series->replace(points);
}

} // namespace

std::unique_ptr<GraphPeer> makeCharts(const GraphView &view, PeerSettings settings)
{
    if (settings == PeerSettings::Defaults)
        return std::make_unique<DefaultCharts>(view);
    return std::make_unique<TunedCharts>(view, settings == PeerSettings::Partial);
}
