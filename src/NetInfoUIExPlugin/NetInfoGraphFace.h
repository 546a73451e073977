#pragma once
// What of the trend graph stays the same from sample to sample: background, frame, grid, labels,
// caption and legend.

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

#include "NetInfoGraphRules.h"

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

//! Everything that decides how it looks.
struct NetInfoGraphFace
{
    QRect area; //!< the widget
    NetInfoRules::GraphPlot plot;
    bool mirrored = false;
    int maximum = NetInfoRules::kFirstGraphScale;
    QString caption;
    QString uploadText;
    QString downloadText;
    QFont font;
    QColor background;
    QColor ink; //!< frame, grid and texts
    QColor upload;
    QColor download;

    [[nodiscard]] bool operator==(const NetInfoGraphFace &other) const;
};

//! Measures the texts of \a face.
[[nodiscard]] NetInfoRules::GraphTexts graphTexts(const NetInfoGraphFace &face);

//! Paints all of \a face.
void paintGraphFace(QPainter &painter, const NetInfoGraphFace &face,
                    const NetInfoRules::GraphTexts &texts);

//! Paints some rows of the plot between two lines, from the widget's top down: columns and frame.
void paintGraphRows(QPainter &painter, const NetInfoGraphFace &face, int height);

//! Paints the two curves. \a lines is scratch memory.
void paintGraphCurves(QPainter &painter, const NetInfoGraphFace &face,
                      const NetInfoRules::GraphCurveArea &area, const QList<double> &upload,
                      const QList<double> &download, QVector<QLineF> &lines);
