#pragma once
// The widgets that the trend graph's benchmark compares: all show the same samples.

#include <QColor>
#include <QSize>
#include <QString>
#include <QVector>

#include <memory>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

//! The same figures for everyone: smooth with some noise, upload and download mostly apart.
namespace GraphSamples {

constexpr int kHighest = 900; //!< the first pair's download; all others stay below
constexpr int kScale = 960; //!< where the scale is after it

struct Pair
{
    double upload;
    double download;
};

//! Pair number \a index, from 0.
[[nodiscard]] Pair at(int index);

} // namespace GraphSamples

//! What everyone shows.
struct GraphView
{
    QSize size; //!< of the window
    int first = 0; //!< number of the oldest pair shown at the start
    int samples = 0; //!< shown of each curve at the start
    int room = 0; //!< samples of each curve that fit
    QString caption; //!< of the speed axis
    QString upload;
    QString download;
    QColor background;
    QColor ink;
    QColor uploadColour;
    QColor downloadColour;

    constexpr static int kColumns = 12;
    constexpr static int kLabelStep = GraphSamples::kScale / 12;

    //! The shown speeds, oldest first.
    [[nodiscard]] QVector<double> uploads() const;
    [[nodiscard]] QVector<double> downloads() const;
    //! 0, 1, 2… for each shown sample.
    [[nodiscard]] QVector<double> positions() const;
    //! The samples to a column.
    [[nodiscard]] double columnStep() const;
};

//! Moves \a values one to the front and puts \a newest at the end.
void shiftIn(QVector<double> &values, double newest);

//! One widget, in a window of its own.
class GraphPeer
{
public:
    GraphPeer() = default;
    virtual ~GraphPeer();
    GraphPeer(const GraphPeer &) = delete;
    GraphPeer &operator=(const GraphPeer &) = delete;

    [[nodiscard]] virtual QWidget &window() = 0;
    //! The part that is painted for each sample; it is the peer's.
    [[nodiscard]] virtual QWidget &canvas();
    //! Adds \a pair and asks for a repaint.
    virtual void append(const GraphSamples::Pair &pair) = 0;
    //! How many samples of each curve the widget holds for painting; -1 if the curves differ.
    [[nodiscard]] virtual int shownSamples() const = 0;
};

enum class PeerSettings {
    Defaults, //!< as the library's documentation shows it
    Tuned, //!< no antialiasing, fixed axes, queued replot; the whole widget is painted
    Partial //!< tuned, and draws anew only what a sample changes
};

//! The trend graph with all pairs up to those that \a view shows.
[[nodiscard]] std::unique_ptr<GraphPeer> makeTrendGraph(const GraphView &view);
//! A widget that draws one opaque image of its size.
[[nodiscard]] std::unique_ptr<GraphPeer> makePlainImage(const GraphView &view);
#ifdef NETINFO_BENCH_QCUSTOMPLOT
[[nodiscard]] std::unique_ptr<GraphPeer> makeQCustomPlot(const GraphView &view,
                                                         PeerSettings settings);
#endif
#ifdef NETINFO_BENCH_QWT
[[nodiscard]] std::unique_ptr<GraphPeer> makeQwt(const GraphView &view, PeerSettings settings);
#endif
#ifdef NETINFO_BENCH_CHARTS
[[nodiscard]] std::unique_ptr<GraphPeer> makeCharts(const GraphView &view, PeerSettings settings);
#endif
