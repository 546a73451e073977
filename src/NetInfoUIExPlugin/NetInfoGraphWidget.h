#pragma once
// The trend graph: upload and download speed of the last minutes as two curves.

#include <QColor>
#include <QFont>
#include <QList>
#include <QString>
#include <QVector>
#include <QWidget>

#include "NetInfoGraphConfigParse.h"
#include "NetInfoGraphFace.h"
#include "NetInfoGraphLayer.h"
#include "NetInfoGraphRules.h"

//! Fed with one sample pair for each statistics event. GUI thread only.
class GraphWidget : public QWidget
{
    Q_OBJECT
public:
    //! Reads the profile. The widget is its parent's.
    explicit GraphWidget(QWidget *parent = nullptr);

    //! Reads colours and font from the profile; what is missing stays at its default.
    void init();
    //! Adds a sample of each speed, in the first speed unit, and schedules a repaint.
    void DrawGraph(double up, double down);
    //! Paints the whole graph; when a part alone is asked for, asks for all of it once more.
    void paintEvent(QPaintEvent *event) override;
    //! Paint frame, caption, grid, legend and curves into the plot of the last paintEvent().
    void drawLeftToRight(QPainter &painter);
    void drawRightToLeft(QPainter &painter);
    //! The text of identifier \a key.
    QString tr(QString key);

private:
    [[nodiscard]] QColor profileColour(int position) const;
    [[nodiscard]] QColor backgroundColour() const;
    [[nodiscard]] NetInfoGraphFace face(bool mirrored);
    void draw(QPainter &painter, bool mirrored);
    void askForWholePaint(const QRect &painted);

    QColor m_gridColour; // also frame and texts
    QColor m_uploadColour;
    QColor m_downloadColour;
    QFont m_font;
    QList<double> m_upload; // newest first
    QList<double> m_download;
    QVector<NetInfoColourConfig> m_colours;
    QVector<NetInfoFontConfig> m_fonts;
    int m_fontPixelSize = 0;
    int m_scaleMaximum = NetInfoRules::kFirstGraphScale;
    int m_historyLimit; // the primary screen's height: the height, not the width, on purpose
    NetInfoRules::GraphPlot m_plot; // of the last paint
    int m_labelWidth = 0; // of the last paint, in pixels
    int m_labelStride = 0; // of the last paint: each m_labelStride-th line has its label

    NetInfoGraphLayer m_layer;
    QVector<QLineF> m_lines; // scratch memory of the curves
    bool m_wholePaintAsked = false;
};
