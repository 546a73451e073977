#pragma once
// The trend graph's unchanging part as pixels: painted when it has changed, copied for each frame.

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
    [[nodiscard]] const NetInfoGraphLabels &labels() const;

private:
    NetInfoGraphFace m_face;
    NetInfoGraphLabels m_labels;
    qreal m_ratio = -1; // none yet
    QPixmap m_pixmap;
};
