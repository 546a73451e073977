#pragma once
// The trend graph's unchanging part as pixels: painted when it has changed, copied for each frame.
//
// Copying a whole large picture costs more than anything else in a frame, because it comes from
// main memory. Most of it are the same few rows again and again; these are kept apart, few enough
// for the processor's cache.

#include <QPixmap>

#include "NetInfoGraphFace.h"

class NetInfoGraphLayer
{
public:
    //! Measures \a face and paints it with \a ratio device pixels to a logical one, unless that is
    //! what there is. A ratio of 0 measures alone.
    void update(const NetInfoGraphFace &face, qreal ratio);
    //! Null without a ratio, without a size, and when there is no memory for it.
    [[nodiscard]] const QPixmap &pixmap() const;
    [[nodiscard]] const NetInfoRules::GraphTexts &texts() const;
    //! Copies the picture to \a painter.
    void paint(QPainter &painter) const;

private:
    void paintPixmaps();
    void copyRepeatedRows(QPainter &painter) const;
    void copySingularParts(QPainter &painter) const;

    NetInfoGraphFace m_face;
    NetInfoRules::GraphTexts m_texts;
    qreal m_ratio = -1; // none yet
    QPixmap m_pixmap;
    QPixmap m_rows; // the rows that repeat themselves; null when all is copied
    QVector<QRect> m_parts; // and the parts that do not
};
