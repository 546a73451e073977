#include "NetInfoGraphFace.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPen>
#include <QVector>

#include <algorithm>

#include "QtCompat.h"

using NetInfoRules::GraphPlot;
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
    void paintLabels(const NetInfoGraphLabels &labels);
    void paintCaption();
    void paintLegend();

private:
    [[nodiscard]] double x(double position) const;
    [[nodiscard]] QRect box(const QRect &box) const;
    [[nodiscard]] int textWidth(const QString &text) const;
    [[nodiscard]] int labelTop(int line) const;
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

int FacePainter::labelTop(int line) const
{
    return int(m_plot.lineY(line)) - m_metrics.height() / 2;
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

void FacePainter::paintLabels(const NetInfoGraphLabels &labels)
{
    if (labels.stride <= 0)
        return;
    const bool beside = NetInfoRules::labelsFitMargin(labels.width);
    const int left = NetInfoRules::graphLabelLeft(m_plot, labels.width);
    QRect place(left, 0, labels.width, m_metrics.height());
    for (int line = 0; !beside && line < kGraphLines; line += labels.stride) {
        place.moveTop(labelTop(line)); // the grid does not cross the digits
        m_painter.fillRect(box(place), m_face.background);
    }
    for (int line = 0; line < kGraphLines; line += labels.stride) {
        place.moveTop(labelTop(line));
        const int value = NetInfoRules::graphScaleLabel(m_face.maximum, line);
        paintText(place, beside ? Qt::AlignLeft : Qt::AlignRight, QString::number(value));
    }
}

void FacePainter::paintCaption()
{
    const QRect &area = m_face.area;
    const int room = area.height() - 2 * kEdge;
    const QString text = m_metrics.elidedText(m_face.caption, Qt::ElideRight, room);
    const bool fitsPlot = textWidth(text) <= m_plot.height;
    const double middle = fitsPlot ? m_plot.top + m_plot.height / 2 : area.center().y();
    m_painter.save();
    m_painter.translate(x(area.left() + (m_plot.left - area.left()) / 2), middle);
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

NetInfoGraphLabels graphLabels(const NetInfoGraphFace &face)
{
    const QFontMetrics metrics(face.font);
    NetInfoGraphLabels labels;
    for (int line = 0; line < kGraphLines; ++line) {
        const QString text = QString::number(NetInfoRules::graphScaleLabel(face.maximum, line));
        labels.width = std::max(labels.width, QtCompat::textWidth(metrics, text));
    }
    const int digitHeight = metrics.tightBoundingRect(QLatin1String("0")).height();
    labels.stride = NetInfoRules::labelStride(face.plot, labels.width, digitHeight + kDigitGap);
    return labels;
}

void paintGraphFace(QPainter &painter, const NetInfoGraphFace &face,
                    const NetInfoGraphLabels &labels)
{
    painter.fillRect(face.area, face.background);
    painter.setFont(face.font);
    FacePainter parts(painter, face);
    if (!face.plot.isEmpty()) {
        parts.paintColumns(face.plot.top, face.plot.top + face.plot.height);
        parts.paintLines();
        parts.paintFrame(face.plot.top, face.plot.height);
        parts.paintLabels(labels);
        parts.paintCaption();
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
    painter.setPen(QPen(face.download, 1));
    painter.drawLines(lines);
    // Once more beside itself: the curves differ in thickness too. A thick pen costs many times
    // two thin ones.
    NetInfoRules::moveAside(lines, area.mirrored ? 1.0 : -1.0);
    painter.drawLines(lines);

    NetInfoRules::curveLines(area, upload, lines);
    painter.setPen(QPen(face.upload, 1));
    painter.drawLines(lines);
    painter.restore();
}
