#include "NetInfoGraphLayer.h"

#include <QPainter>

#include <algorithm>

#include "QtCompat.h"

namespace {

constexpr int kRowsHeight = 8 * NetInfoRules::kGraphDotPeriod; // of the repeated rows

//! Whether the rows between two lines can stand for the others: pixels are copied one to one, and
//! copying twice is copying once.
[[nodiscard]] bool repeatsRows(const NetInfoGraphFace &face, qreal ratio)
{
    return (ratio == 1 || ratio == 2) && !face.plot.isEmpty() && face.background.alpha() == 255;
}

} // namespace

void NetInfoGraphLayer::update(const NetInfoGraphFace &face, qreal ratio)
{
    if (ratio == m_ratio && face == m_face)
        return;
    m_face = face;
    m_ratio = ratio;
    m_labels = graphLabels(face);
    m_rows = QPixmap();
    m_pixmap = ratio > 0 ? QtCompat::pixmapWithRatio(face.area.size(), ratio) : QPixmap();
    if (!m_pixmap.isNull())
        paintPixmaps();
}

void NetInfoGraphLayer::paintPixmaps()
{
    // The last pixels may be half a logical one, which painting leaves as they are.
    m_pixmap.fill(m_face.background.alpha() < 255 ? QColor(Qt::transparent) : m_face.background);
    QPainter painter(&m_pixmap);
    paintGraphFace(painter, m_face, m_labels);
    painter.end();
    if (!repeatsRows(m_face, m_ratio))
        return;
    m_rows = QtCompat::pixmapWithRatio(QSize(m_face.area.width(), kRowsHeight), m_ratio);
    if (m_rows.isNull())
        return;
    painter.begin(&m_rows);
    paintGraphRows(painter, m_face, kRowsHeight);
}

void NetInfoGraphLayer::paint(QPainter &painter) const
{
    if (m_rows.isNull()) {
        painter.drawPixmap(0, 0, m_pixmap);
        return;
    }
    copyRepeatedRows(painter);
    copyMargins(painter);
    for (const NetInfoRules::GraphRows &rows : NetInfoRules::singularRows(m_face.plot, m_face.area))
        copy(painter, QRect(0, rows.top, m_face.area.width(), rows.height));
}

void NetInfoGraphLayer::copy(QPainter &painter, const QRect &part) const
{
    const QRectF source(part.x() * m_ratio, part.y() * m_ratio, part.width() * m_ratio,
                        part.height() * m_ratio);
    painter.drawPixmap(QRectF(part), m_pixmap, source);
}

void NetInfoGraphLayer::copyRepeatedRows(QPainter &painter) const
{
    const int width = m_face.area.width();
    const int bottom = int(m_face.plot.top + m_face.plot.height);
    for (int top = int(m_face.plot.top); top < bottom; top += kRowsHeight) {
        const int height = std::min(kRowsHeight, bottom - top);
        painter.drawPixmap(QRectF(0, top, width, height), m_rows,
                           QRectF(0, 0, width * m_ratio, height * m_ratio));
    }
}

void NetInfoGraphLayer::copyMargins(QPainter &painter) const
{
    const int top = int(m_face.plot.top);
    const int height = int(m_face.plot.height);
    const int left = int(m_face.plot.left);
    const int width = m_face.area.width();
    const int right = graphLabelLeft(m_face.plot, m_labels.width);
    for (const QRect &part :
         { QRect(0, top, left, height), QRect(right, top, width - right, height) })
        copy(painter,
             m_face.mirrored ? QRect(width - part.right() - 1, top, part.width(), height) : part);
}

const QPixmap &NetInfoGraphLayer::pixmap() const
{
    return m_pixmap;
}

const NetInfoGraphLabels &NetInfoGraphLayer::labels() const
{
    return m_labels;
}
