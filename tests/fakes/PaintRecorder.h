#pragma once
// A paint device that keeps what is painted on it: lines, rectangles and texts in its own pixels.

#include <QColor>
#include <QFont>
#include <QLineF>
#include <QList>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QString>

struct RecordedLine
{
    QLineF line;
    QColor colour;
    bool dotted;
    int order; //!< of the call among all that paint
};

struct RecordedRect
{
    QRectF rect;
    QColor outline; //!< invalid: none
    QColor fill; //!< invalid: none
    int order;
};

struct RecordedText
{
    QString text;
    QPointF baseline;
    qreal angle; //!< in degrees, clockwise
    QFont font;
    QColor colour;
    int order;

    //! What the glyphs cover.
    [[nodiscard]] QRectF ink() const;
};

class PaintRecorder : public QPaintDevice, public QPaintEngine
{
public:
    explicit PaintRecorder(const QSize &size);

    QList<RecordedLine> lines;
    QList<RecordedRect> rects;
    QList<RecordedText> texts;
    int pixmaps = 0;

    //! Lines of \a colour; \a dotted or not.
    [[nodiscard]] QList<RecordedLine> linesOf(const QColor &colour, bool dotted = false) const;
    [[nodiscard]] QStringList textList() const;

    QPaintEngine *paintEngine() const override;
    bool begin(QPaintDevice *device) override;
    bool end() override;
    void updateState(const QPaintEngineState &state) override;
    void drawLines(const QLineF *list, int count) override;
    void drawRects(const QRectF *list, int count) override;
    void drawPixmap(const QRectF &target, const QPixmap &pixmap, const QRectF &source) override;
    void drawTextItem(const QPointF &position, const QTextItem &item) override;
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override;
    void drawPath(const QPainterPath &path) override;
    Type type() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    QSize m_size;
    int m_calls = 0;
};
