#include "NetInfoGraphFace.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPen>
#include <QVector>

#include <algorithm>

#include "QtCompat.h"

using NetInfoRules::GraphPlot;
using NetInfoRules::GraphTexts;
using NetInfoRules::kGraphColumns;
using NetInfoRules::kGraphDotPeriod;
using NetInfoRules::kGraphLines;

namespace {

constexpr int kLegendTop = 8;
constexpr int kLegendBottom = 52; // above the topmost label
constexpr int kRowGap = 4;
constexpr int kSwatchWidth = 18;
constexpr int kSwatchGap = 6;
constexpr int kEntryGap = 18;
constexpr int kTextSlack = 2; // eliding measures in fractions of a pixel
constexpr int kEdge = 4; // between a text and the widget's edge
constexpr int kDigitGap = 2; // between labels one above the other

//! Paints in the coordinates of a left-to-right layout, mirrored where the layout is.
class FacePainter
{
public:
    FacePainter(QPainter &painter, const NetInfoGraphFace &face)
        : m_painter(painter)
        , m_face(face)
        , m_plot(face.plot)
        , m_metrics(face.font)
    {
    }

    void paintColumns(double top, double bottom);
    void paintLines();
    void paintFrame(double top, double height);
    void paintLabels(const GraphTexts &texts);
    void paintCaption(const GraphTexts &texts);
    void paintLegend();

private:
    [[nodiscard]] double x(double position) const;
    [[nodiscard]] QRect box(const QRect &box) const;
    [[nodiscard]] int textWidth(const QString &text) const;
    [[nodiscard]] QPen gridPen() const;
    void paintText(const QRect &box, Qt::AlignmentFlag side, const QString &text);
    void paintEntry(int left, int centre, int width, bool isDownload);

    QPainter &m_painter;
    const NetInfoGraphFace &m_face;
    const GraphPlot &m_plot;
    const QFontMetrics m_metrics;
};

double FacePainter::x(double position) const
{
    return m_face.mirrored ? m_face.area.left() + m_face.area.right() - position : position;
}

QRect FacePainter::box(const QRect &box) const
{
    if (!m_face.mirrored)
        return box;
    QRect mirrored = box;
    mirrored.moveRight(m_face.area.left() + m_face.area.right() - box.left());
    return mirrored;
}

int FacePainter::textWidth(const QString &text) const
{
    return QtCompat::textWidth(m_metrics, text);
}

void FacePainter::paintText(const QRect &place, Qt::AlignmentFlag side, const QString &text)
{
    Qt::AlignmentFlag shown = side;
    if (m_face.mirrored)
        shown = side == Qt::AlignLeft ? Qt::AlignRight : Qt::AlignLeft;
    m_painter.drawText(
        box(place), int(Qt::AlignVCenter) | Qt::AlignAbsolute | Qt::TextSingleLine | shown, text);
}

void FacePainter::paintColumns(double top, double bottom)
{
    QVector<QLineF> lines;
    for (int column = 1; column < kGraphColumns; ++column) {
        const double position = x(m_plot.left + column * m_plot.columnStep);
        lines << QLineF(position, top, position, bottom);
    }
    m_painter.setPen(gridPen());
    m_painter.drawLines(lines);
}

void FacePainter::paintLines()
{
    QVector<QLineF> lines;
    // From the maximum down to two twelfths of it; zero is the frame's lower edge.
    for (int line = 0; line < kGraphLines; ++line) {
        const double position = m_plot.lineY(line);
        lines << QLineF(x(m_plot.left), position, x(m_plot.left + m_plot.width), position);
    }
    m_painter.setPen(gridPen());
    m_painter.drawLines(lines);
}

void FacePainter::paintFrame(double top, double height)
{
    const double left = std::min(x(m_plot.left), x(m_plot.left + m_plot.width));
    m_painter.setPen(QPen(m_face.ink, 1));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(QRectF(left, top, m_plot.width, height));
}

QPen FacePainter::gridPen() const
{
    QPen pen(m_face.ink, 1, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern(QVector<qreal>() << 1 << kGraphDotPeriod - 1);
    return pen;
}

void FacePainter::paintLabels(const GraphTexts &texts)
{
    if (texts.labelStride <= 0)
        return;
    const bool beside = NetInfoRules::labelsFitMargin(texts.labelWidth);
    const int left = NetInfoRules::graphLabelLeft(m_plot, texts.labelWidth);
    QRect place(left, 0, texts.labelWidth, texts.labelHeight);
    for (int line = 0; !beside && line < kGraphLines; line += texts.labelStride) {
        place.moveTop(NetInfoRules::graphLabelTop(m_plot, line, texts.labelHeight));
        m_painter.fillRect(box(place), m_face.background); // the grid does not cross the digits
    }
    for (int line = 0; line < kGraphLines; line += texts.labelStride) {
        place.moveTop(NetInfoRules::graphLabelTop(m_plot, line, texts.labelHeight));
        const int value = NetInfoRules::graphScaleLabel(m_face.maximum, line);
        paintText(place, beside ? Qt::AlignLeft : Qt::AlignRight, QString::number(value));
    }
}

void FacePainter::paintCaption(const GraphTexts &texts)
{
    const int room = texts.captionHeight;
    const QString text = m_metrics.elidedText(m_face.caption, Qt::ElideRight, room);
    m_painter.save();
    m_painter.translate(x(m_plot.left / 2), texts.captionTop + room / 2.0);
    m_painter.rotate(m_face.mirrored ? 90 : -90); // read towards the plot's top, or from it
    const QRect place(-room / 2, -m_metrics.height() / 2, room, m_metrics.height());
    m_painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, text);
    m_painter.restore();
}

void FacePainter::paintLegend()
{
    const int left = int(m_plot.left);
    const int room = m_face.area.right() - kEdge - left;
    const int swatch = kSwatchWidth + kSwatchGap;
    if (room <= swatch)
        return;
    const int besideText = swatch + kTextSlack;
    const int upload = std::min(room, besideText + textWidth(m_face.uploadText));
    const int download = std::min(room, besideText + textWidth(m_face.downloadText));
    const int middle = m_face.area.top() + (kLegendTop + kLegendBottom) / 2;
    if (upload + kEntryGap + download <= room) {
        paintEntry(left, middle, upload, false);
        paintEntry(left + upload + kEntryGap, middle, download, true);
    } else {
        const int row = m_metrics.height() + kRowGap;
        paintEntry(left, middle - row / 2, upload, false);
        paintEntry(left, middle + row / 2, download, true);
    }
}

void FacePainter::paintEntry(int left, int centre, int width, bool isDownload)
{
    const double end = x(left + kSwatchWidth - 1);
    const QLineF stroke(x(left), centre, end, centre);
    m_painter.setPen(QPen(isDownload ? m_face.download : m_face.upload, 1));
    m_painter.drawLine(stroke);
    if (isDownload) // twice as thick, like its curve
        m_painter.drawLine(stroke.translated(0, -1));
    m_painter.setPen(m_face.ink);
    const QRect place(left + kSwatchWidth + kSwatchGap, centre - m_metrics.height() / 2,
                      width - kSwatchWidth - kSwatchGap, m_metrics.height());
    const QString &text = isDownload ? m_face.downloadText : m_face.uploadText;
    paintText(place, Qt::AlignLeft, m_metrics.elidedText(text, Qt::ElideRight, place.width()));
}

} // namespace

bool NetInfoGraphFace::operator==(const NetInfoGraphFace &other) const
{
    return area == other.area && plot == other.plot && mirrored == other.mirrored
        && maximum == other.maximum && caption == other.caption && uploadText == other.uploadText
        && downloadText == other.downloadText && background == other.background && ink == other.ink
        && upload == other.upload && download == other.download && font == other.font;
}

GraphTexts graphTexts(const NetInfoGraphFace &face)
{
    const QFontMetrics metrics(face.font);
    GraphTexts texts;
    for (int line = 0; line < kGraphLines; ++line) {
        const QString text = QString::number(NetInfoRules::graphScaleLabel(face.maximum, line));
        texts.labelWidth = std::max(texts.labelWidth, QtCompat::textWidth(metrics, text));
    }
    texts.labelHeight = metrics.height();
    const int digitHeight = metrics.tightBoundingRect(QLatin1String("0")).height();
    texts.labelStride
        = NetInfoRules::labelStride(face.plot, texts.labelWidth, digitHeight + kDigitGap);
    // Beside the plot, or along the whole widget when it is longer.
    const int wanted = QtCompat::textWidth(metrics, face.caption) + 2 * kTextSlack;
    const int room = face.area.height() - 2 * kEdge;
    const double middle = wanted <= face.plot.height ? face.plot.top + face.plot.height / 2
                                                     : face.area.height() / 2.0;
    texts.captionHeight = std::max(0, std::min(wanted, room));
    texts.captionTop = int(middle) - texts.captionHeight / 2;
    return texts;
}

void paintGraphFace(QPainter &painter, const NetInfoGraphFace &face, const GraphTexts &texts)
{
    painter.fillRect(face.area, face.background);
    painter.setFont(face.font);
    FacePainter parts(painter, face);
    if (!face.plot.isEmpty()) {
        parts.paintColumns(face.plot.top, face.plot.top + face.plot.height);
        parts.paintLines();
        parts.paintFrame(face.plot.top, face.plot.height);
        parts.paintLabels(texts);
        parts.paintCaption(texts);
    }
    parts.paintLegend();
}

void paintGraphRows(QPainter &painter, const NetInfoGraphFace &face, int height)
{
    painter.fillRect(0, 0, face.area.width(), height, face.background);
    FacePainter parts(painter, face);
    parts.paintColumns(0, height);
    parts.paintFrame(-1, height + 2); // its sides alone
}

void paintGraphCurves(QPainter &painter, const NetInfoGraphFace &face,
                      const NetInfoRules::GraphCurveArea &area, const QList<double> &upload,
                      const QList<double> &download, QVector<QLineF> &lines)
{
    painter.save();
    const double left = area.mirrored ? area.mirrorSum - area.right : area.right - area.width;
    painter.setClipRect(QRectF(left, area.top, area.width + 1, area.height + 1));
    NetInfoRules::curveLines(area, download, lines);
    NetInfoRules::thickenLines(lines, area.mirrored ? 1.0 : -1.0);
    painter.setPen(QPen(face.download, 1)); // a thick pen costs many times two thin lines
    painter.drawLines(lines);

    NetInfoRules::curveLines(area, upload, lines);
    painter.setPen(QPen(face.upload, 1));
    painter.drawLines(lines);
    painter.restore();
}
