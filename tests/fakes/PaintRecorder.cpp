#include "PaintRecorder.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPixmap>
#include <QStringList>
#include <QtMath>
#include <QTransform>

#include <cmath>

namespace {

QColor outlineOf(const QPainter *painter)
{
    return painter->pen().style() == Qt::NoPen ? QColor() : painter->pen().color();
}

QColor fillOf(const QPainter *painter)
{
    return painter->brush().style() == Qt::NoBrush ? QColor() : painter->brush().color();
}

} // namespace

QRectF RecordedText::ink() const
{
    QTransform transform;
    transform.translate(baseline.x(), baseline.y());
    transform.rotate(angle);
    return transform.mapRect(QFontMetricsF(font).tightBoundingRect(text));
}

PaintRecorder::PaintRecorder(const QSize &size)
    : QPaintEngine(QPaintEngine::AllFeatures)
    , m_size(size)
{
}

QList<RecordedLine> PaintRecorder::linesOf(const QColor &colour, bool dotted) const
{
    QList<RecordedLine> found;
    for (const RecordedLine &line : lines) {
        if (line.colour == colour && line.dotted == dotted)
            found << line;
    }
    return found;
}

QStringList PaintRecorder::textList() const
{
    QStringList list;
    for (const RecordedText &text : texts)
        list << text.text;
    return list;
}

QPaintEngine *PaintRecorder::paintEngine() const
{
    return const_cast<PaintRecorder *>(this);
}

bool PaintRecorder::begin(QPaintDevice *)
{
    setActive(true);
    return true;
}

bool PaintRecorder::end()
{
    setActive(false);
    return true;
}

void PaintRecorder::updateState(const QPaintEngineState &) { }

void PaintRecorder::drawLines(const QLineF *list, int count)
{
    const QPen pen = painter()->pen();
    ++m_calls;
    for (int i = 0; i < count; ++i) {
        lines << RecordedLine { painter()->deviceTransform().map(list[i]), pen.color(),
                                pen.style() != Qt::SolidLine, m_calls };
    }
}

void PaintRecorder::drawRects(const QRectF *list, int count)
{
    for (int i = 0; i < count; ++i) {
        rects << RecordedRect { painter()->deviceTransform().mapRect(list[i]), outlineOf(painter()),
                                fillOf(painter()), ++m_calls };
    }
}

void PaintRecorder::drawPixmap(const QRectF &, const QPixmap &, const QRectF &)
{
    ++pixmaps;
}

void PaintRecorder::drawTextItem(const QPointF &position, const QTextItem &item)
{
    const QTransform &transform = painter()->deviceTransform();
    const QLineF along = transform.map(QLineF(position, position + QPointF(1, 0)));
    texts << RecordedText { item.text(),
                            along.p1(),
                            qRadiansToDegrees(std::atan2(along.dy(), along.dx())),
                            item.font(),
                            painter()->pen().color(),
                            ++m_calls };
}

void PaintRecorder::drawPolygon(const QPointF *, int, PolygonDrawMode)
{
    qFatal("a polygon is painted");
}

void PaintRecorder::drawPath(const QPainterPath &)
{
    qFatal("a path is painted");
}

QPaintEngine::Type PaintRecorder::type() const
{
    return QPaintEngine::User;
}

int PaintRecorder::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return m_size.width();
    case PdmHeight:
        return m_size.height();
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return 96;
    case PdmDevicePixelRatio:
        return 1;
    default:
        return QPaintDevice::metric(metric);
    }
}
