#include "NetInfoGraphLayer.h"

#include <QPainter>

#include <algorithm>

#include "QtCompat.h"

namespace {

constexpr int kRowsHeight = 8 * NetInfoRules::kGraphDotPeriod; // of the repeated rows

constexpr qreal kLargePicture = 500 * 1000; // pixels, about half of what a second-level cache holds

//! Whether some rows stand for the others: in large pictures, where pixels are copied one to one
//! and copying twice is copying once.
[[nodiscard]] bool repeatsRows(const NetInfoGraphFace &face, qreal ratio)
{
    const qreal pixels = face.area.width() * ratio * face.area.height() * ratio;
    return pixels >= kLargePicture && (ratio == 1 || ratio == 2) && !face.plot.isEmpty()
        && face.background.alpha() == 255;
}

} // namespace

void NetInfoGraphLayer::update(const NetInfoGraphFace &face, qreal ratio)
{
    if (ratio == m_ratio && face == m_face)
        return;
    m_face = face;
    m_ratio = ratio;
    m_texts = graphTexts(face);
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
    paintGraphFace(painter, m_face, m_texts);
    painter.end();
    if (!repeatsRows(m_face, m_ratio))
        return;
    m_rows = QtCompat::pixmapWithRatio(QSize(m_face.area.width(), kRowsHeight), m_ratio);
    if (m_rows.isNull())
        return;
    painter.begin(&m_rows);
    paintGraphRows(painter, m_face, kRowsHeight);
    m_parts = NetInfoRules::singularParts(m_face.plot, m_face.area, m_texts);
}

void NetInfoGraphLayer::paint(QPainter &painter) const
{
    if (m_rows.isNull()) {
        painter.drawPixmap(0, 0, m_pixmap);
        return;
    }
    copyRepeatedRows(painter);
    copySingularParts(painter);
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

void NetInfoGraphLayer::copySingularParts(QPainter &painter) const
{
    for (QRectF part : m_parts) {
        if (m_face.mirrored)
            part.moveLeft(m_face.area.width() - part.right());
        painter.drawPixmap(part, m_pixmap, QRectF(part.topLeft() * m_ratio, part.size() * m_ratio));
    }
}

const QPixmap &NetInfoGraphLayer::pixmap() const
{
    return m_pixmap;
}

const NetInfoRules::GraphTexts &NetInfoGraphLayer::texts() const
{
    return m_texts;
}
