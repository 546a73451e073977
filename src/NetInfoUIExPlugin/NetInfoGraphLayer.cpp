#include "NetInfoGraphLayer.h"

#include <QPainter>

#include "QtCompat.h"

void NetInfoGraphLayer::update(const NetInfoGraphFace &face, qreal ratio)
{
    if (ratio == m_ratio && face == m_face)
        return;
    m_face = face;
    m_ratio = ratio;
    m_labels = graphLabels(face);
    m_pixmap = ratio > 0 ? QtCompat::pixmapWithRatio(face.area.size(), ratio) : QPixmap();
    if (m_pixmap.isNull())
        return;
    if (face.background.alpha() < 255)
        m_pixmap.fill(Qt::transparent);
    QPainter painter(&m_pixmap);
    paintGraphFace(painter, face, m_labels);
}

const QPixmap &NetInfoGraphLayer::pixmap() const
{
    return m_pixmap;
}

const NetInfoGraphLabels &NetInfoGraphLayer::labels() const
{
    return m_labels;
}
