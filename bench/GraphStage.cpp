#include "GraphStage.h"

#include <QApplication>
#include <QEvent>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kCheckedFrames = 20;
constexpr int kMostRounds = 50; // of the event loop until a frame is painted
constexpr int kColourDistance = 150; // sum of the channels: also blended lines count
constexpr double kLeastWidth = 0.6; // of the window has a full curve in it

void processAll()
{
    for (int i = 0; i < kMostRounds; ++i)
        QApplication::processEvents();
}

[[nodiscard]] bool isNear(QRgb pixel, const QColor &colour)
{
    return std::abs(qRed(pixel) - colour.red()) + std::abs(qGreen(pixel) - colour.green())
        + std::abs(qBlue(pixel) - colour.blue())
        <= kColourDistance;
}

//! The columns of pixels with \a colour in them.
[[nodiscard]] int columnsWith(const QImage &image, const QColor &colour)
{
    int columns = 0;
    for (int x = 0; x < image.width(); ++x) {
        int y = 0;
        while (y < image.height() && !isNear(image.pixel(x, y), colour))
            ++y;
        columns += y < image.height() ? 1 : 0;
    }
    return columns;
}

//! Where NETINFO_BENCH_IMAGES names a folder.
void saveForPeople(const QImage &image, const char *name)
{
    const QString folder = QString::fromLocal8Bit(qgetenv("NETINFO_BENCH_IMAGES"));
    if (folder.isEmpty())
        return;
    const QString file = QString::fromLatin1(name).replace(QLatin1Char('/'), QLatin1Char('-'));
    if (!image.save(folder + QLatin1Char('/') + file + QLatin1String(".png")))
        qWarning("%s: no picture saved", name);
}

} // namespace

PaintCounter::PaintCounter(QWidget &widget)
{
    widget.installEventFilter(this);
}

int PaintCounter::count() const
{
    return m_count;
}

bool PaintCounter::eventFilter(QObject *watched, QEvent *event)
{
    m_count += event->type() == QEvent::Paint ? 1 : 0;
    return QObject::eventFilter(watched, event);
}

GraphStage::GraphStage(const GraphView &view, std::unique_ptr<GraphPeer> peer)
    : m_view(view)
    , m_peer(std::move(peer))
    , m_paints(m_peer->canvas())
    , m_next(view.first + view.samples)
{
    m_peer->window().resize(view.size);
    m_peer->window().show();
    processAll();
    if (m_peer->window().size() != view.size)
        qFatal("a window has not the size asked for");
}

void GraphStage::nextFrame()
{
    const int before = m_paints.count();
    m_peer->append(GraphSamples::at(m_next));
    ++m_next;
    for (int round = 0; m_paints.count() == before; ++round) {
        if (round == kMostRounds)
            qFatal("a frame is not painted");
        QApplication::processEvents();
    }
}

QImage GraphStage::shown()
{
    QWidget &window = m_peer->window();
    return window.screen()->grabWindow(window.winId()).toImage();
}

void GraphStage::check(const char *name, bool hasCurves)
{
    checkFrames(name);
    if (!hasCurves)
        return;
    const QImage before = shown();
    nextFrame();
    processAll();
    if (shown().size() != m_view.size || before == shown())
        qFatal("%s: the window does not show a new sample", name);
    checkCurves(name);
}

void GraphStage::checkFrames(const char *name)
{
    nextFrame(); // the first ones may lay out
    processAll();
    const int before = m_paints.count();
    for (int i = 0; i < kCheckedFrames; ++i)
        nextFrame();
    processAll();
    if (m_paints.count() - before != kCheckedFrames)
        qFatal("%s: %d frames are painted %d times", name, kCheckedFrames,
               m_paints.count() - before);
}

void GraphStage::checkCurves(const char *name)
{
    const int samples = std::min(m_view.room, m_next - m_view.first);
    if (m_peer->shownSamples() != samples)
        qFatal("%s: %d samples shown, not %d", name, m_peer->shownSamples(), samples);
    const QImage image = shown();
    const int least = int(kLeastWidth * m_view.size.width() * samples / m_view.room);
    for (const QColor &colour : { m_view.uploadColour, m_view.downloadColour }) {
        const int columns = columnsWith(image, colour);
        if (columns < least)
            qFatal("%s: a curve covers %d columns, not %d", name, columns, least);
    }
    saveForPeople(image, name);
}
