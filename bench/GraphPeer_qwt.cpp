#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_text.h>

#include "GraphPeers.h"

namespace {

//! Two curves with grid, legend and axes.
class QwtPeer : public GraphPeer
{
public:
    explicit QwtPeer(const GraphView &view);

    QWidget &window() override
    {
        return m_plot;
    }
    QWidget &canvas() override
    {
        return *m_plot.canvas();
    }
    int shownSamples() const override
    {
        const size_t count = m_download->dataSize();
        return count == m_upload->dataSize() ? int(count) : -1;
    }

protected:
    QwtPlot m_plot;
    QwtPlotGrid *m_grid; // the plot's, as are the curves
    QwtPlotCurve *m_download;
    QwtPlotCurve *m_upload;
    QVector<double> m_positions;
    QVector<double> m_downloads;
    QVector<double> m_uploads;

private:
    [[nodiscard]] QwtPlotCurve *addCurve(const QString &name, const QColor &colour);
};

QwtPeer::QwtPeer(const GraphView &view)
    : m_grid(new QwtPlotGrid)
    , m_download(addCurve(view.download, view.downloadColour))
    , m_upload(addCurve(view.upload, view.uploadColour))
    , m_positions(view.positions())
    , m_downloads(view.downloads())
    , m_uploads(view.uploads())
{
    QPalette palette = m_plot.palette();
    palette.setColor(QPalette::Window, view.background);
    palette.setColor(QPalette::WindowText, view.ink);
    palette.setColor(QPalette::Text, view.ink);
    m_plot.setPalette(palette);
    m_plot.setCanvasBackground(view.background);
    m_plot.insertLegend(new QwtLegend, QwtPlot::TopLegend);
    m_plot.setAxisTitle(QwtPlot::yLeft, view.caption);
    m_plot.setAxisScale(QwtPlot::yLeft, 0, GraphSamples::kScale);
    m_grid->setMajorPen(QPen(view.ink.darker(), 0, Qt::DotLine));
    m_grid->attach(&m_plot);
}

QwtPlotCurve *QwtPeer::addCurve(const QString &name, const QColor &colour)
{
    auto *const curve = new QwtPlotCurve(name);
    curve->setPen(QPen(colour));
    curve->attach(&m_plot);
    return curve;
}

//! Whole vectors are set for each sample, and the time axis moves with them.
class DefaultQwt : public QwtPeer
{
public:
    explicit DefaultQwt(const GraphView &view)
        : QwtPeer(view)
        , m_next(view.samples)
    {
        show();
    }

    void append(const GraphSamples::Pair &pair) override
    {
        shiftIn(m_positions, m_next++);
        shiftIn(m_downloads, pair.download);
        shiftIn(m_uploads, pair.upload);
        show();
    }

private:
    void show()
    {
        m_download->setSamples(m_positions, m_downloads);
        m_upload->setSamples(m_positions, m_uploads);
        m_plot.setAxisScale(QwtPlot::xBottom, m_positions.first(), m_positions.last());
        m_plot.replot();
    }

    int m_next;
};

//! Fixed scales, samples that are not copied, a canvas that paints straight to the window.
class TunedQwt : public QwtPeer
{
public:
    TunedQwt(const GraphView &view, bool canvasOnly);

    void append(const GraphSamples::Pair &pair) override
    {
        shiftIn(m_downloads, pair.download);
        shiftIn(m_uploads, pair.upload);
        m_plot.canvas()->update(); // the scales have not changed: replot() would do more
        if (!m_canvasOnly)
            m_plot.update(); // the rest: an opaque child is not part of it
    }

private:
    bool m_canvasOnly;
};

TunedQwt::TunedQwt(const GraphView &view, bool canvasOnly)
    : QwtPeer(view)
    , m_canvasOnly(canvasOnly)
{
    auto *const canvas = static_cast<QwtPlotCanvas *>(m_plot.canvas());
    canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, false);
    canvas->setPaintAttribute(QwtPlotCanvas::Opaque, true);
    canvas->setFrameStyle(QFrame::NoFrame);
    m_plot.setAutoReplot(false);
    m_plot.setAxisScale(QwtPlot::xBottom, 0, view.samples - 1, view.columnStep());
    m_plot.setAxisScale(QwtPlot::yLeft, 0, GraphSamples::kScale, GraphView::kLabelStep);
    m_plot.setAxisMaxMinor(QwtPlot::xBottom, 0);
    m_plot.setAxisMaxMinor(QwtPlot::yLeft, 0);
    m_grid->setMajorPen(QPen(view.ink.darker(), 0)); // solid: dots take longer
    for (QwtPlotCurve *curve : { m_download, m_upload }) {
        curve->setRenderHint(QwtPlotItem::RenderAntialiased, false);
        curve->setPaintAttribute(QwtPlotCurve::ClipPolygons, false); // all is inside
        curve->setPaintAttribute(QwtPlotCurve::FilterPoints, true);
    }
    m_download->setRawSamples(m_positions.constData(), m_downloads.constData(), view.samples);
    m_upload->setRawSamples(m_positions.constData(), m_uploads.constData(), view.samples);
    m_plot.replot();
}

} // namespace

std::unique_ptr<GraphPeer> makeQwt(const GraphView &view, PeerSettings settings)
{
    if (settings == PeerSettings::Defaults)
        return std::make_unique<DefaultQwt>(view);
    return std::make_unique<TunedQwt>(view, settings == PeerSettings::Partial);
}
