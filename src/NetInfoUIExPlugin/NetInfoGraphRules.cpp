#include "NetInfoGraphRules.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NetInfoRules {

namespace {

constexpr double kSmallestSpacing = 4.0;
constexpr double kSpacingPerHeight = 0.01; // so that in a high plot not every step is a cliff

constexpr int kTopMargin = 60;
constexpr int kLeftMargin = 20;
constexpr int kVerticalMargins = 69;
constexpr int kHorizontalMargins = 49;
constexpr int kLabelMargin = 26; // right of the plot, after a gap of 3

} // namespace

int truncatedSample(double value)
{
    if (std::isnan(value))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return int(std::min(std::max(value, lowest), highest));
}

int grownGraphScale(int maximum, double up, double down)
{
    const int upload = truncatedSample(up);
    const int download = truncatedSample(down);
    // Crosswise on purpose: a download above the scale hides the upload, however large it is.
    const int candidate = maximum >= download ? std::max(maximum, upload) : download;
    if (candidate <= maximum)
        return maximum;
    constexpr int step = kFirstGraphScale;
    constexpr int largest = std::numeric_limits<int>::max() / step * step;
    const int below = candidate / step * step;
    return below < largest ? below + step : largest;
}

int entriesToDrop(int count, int limit)
{
    return count > limit ? std::min(2, count) : 0;
}

int graphScaleLabel(int maximum, int line)
{
    return maximum - line * (maximum / kGraphColumns);
}

bool GraphPlot::operator==(const GraphPlot &other) const
{
    return top == other.top && left == other.left && height == other.height && width == other.width
        && secondLeft == other.secondLeft && columnStep == other.columnStep;
}

bool GraphPlot::isEmpty() const
{
    return height <= 0.0 || width <= 0.0;
}

double GraphPlot::lineY(int line) const
{
    return top + line * height / kGraphColumns;
}

GraphPlot graphPlot(const QRect &area)
{
    GraphPlot plot;
    plot.top = area.top() + kTopMargin;
    plot.left = area.left() + kLeftMargin;
    plot.height = area.bottom() - area.top() - kVerticalMargins;
    plot.width = area.right() - area.left() - kHorizontalMargins;
    plot.secondLeft = plot.left;
    plot.columnStep = plot.width / double(kGraphColumns);
    return plot;
}

bool labelsFitMargin(int width)
{
    return width <= kLabelMargin;
}

int graphLabelTop(const GraphPlot &plot, int line, int labelHeight)
{
    return int(plot.lineY(line)) - labelHeight / 2;
}

int graphLabelLeft(const GraphPlot &plot, int labelWidth)
{
    const int right = int(plot.left + plot.width);
    const int taken = labelsFitMargin(labelWidth) ? 0 : 2 * kGraphLabelGap + labelWidth;
    return right + kGraphLabelGap - taken;
}

GraphCurveArea graphCurveArea(const GraphPlot &plot, const QRect &area, int labelWidth, int maximum,
                              bool mirrored)
{
    const int taken = labelsFitMargin(labelWidth) ? 0 : labelWidth + 2 * kGraphLabelGap;
    GraphCurveArea curves;
    curves.right = plot.left + plot.width - taken;
    curves.top = plot.top;
    curves.width = plot.width - taken;
    curves.height = plot.height;
    curves.spacing = sampleSpacing(plot);
    curves.maximum = maximum;
    curves.mirrored = mirrored;
    curves.mirrorSum = area.left() + area.right();
    return curves;
}

double sampleSpacing(const GraphPlot &plot)
{
    const double least = std::max(kSmallestSpacing, plot.height * kSpacingPerHeight);
    const double samples = std::max(1.0, std::floor(plot.columnStep / least));
    return std::max(plot.columnStep / samples, 1.0);
}

int visibleSamples(const GraphCurveArea &area, int count)
{
    if (area.width <= 0.0 || area.height <= 0.0 || area.spacing <= 0.0)
        return 0;
    constexpr double rounding = 1e-6; // twelve columns are not quite twelve twelfths
    return std::min(count, int(area.width / area.spacing + rounding) + 1);
}

double sampleX(const GraphCurveArea &area, int age)
{
    const double x = area.right - age * area.spacing;
    return area.mirrored ? area.mirrorSum - x : x;
}

double sampleY(const GraphCurveArea &area, double speed)
{
    const double bottom = area.top + area.height;
    if (!(speed > 0.0) || area.maximum <= 0)
        return bottom;
    return bottom - std::min(speed / area.maximum, 1.0) * area.height;
}

void curveLines(const GraphCurveArea &area, const QList<double> &history, QVector<QLineF> &lines)
{
    const int count = visibleSamples(area, int(history.size()));
    lines.resize(std::max(0, count - 1));
    if (count < 2)
        return;
    QPointF newer(sampleX(area, 0), sampleY(area, history.at(0)));
    for (int age = 1; age < count; ++age) {
        const QPointF older(sampleX(area, age), sampleY(area, history.at(age)));
        lines[age - 1] = QLineF(newer, older);
        newer = older;
    }
}

void thickenLines(QVector<QLineF> &lines, double across)
{
    // From the back, so that each finds its place free. Twins lie side by side in the list because
    // the second then finds its pixels in the processor's cache.
    const int count = int(lines.size());
    lines.resize(2 * count);
    for (int i = count - 1; i >= 0; --i) {
        const QLineF line = lines.at(i);
        const bool steep = std::abs(line.dy()) > std::abs(line.dx());
        lines[2 * i] = line;
        lines[2 * i + 1] = line.translated(steep ? across : 0.0, steep ? 0.0 : -1.0);
    }
}

int labelStride(const GraphPlot &plot, int labelWidth, int labelHeight)
{
    const bool fits = labelsFitMargin(labelWidth) || labelWidth + 2 * kGraphLabelGap <= plot.width;
    if (plot.isEmpty() || labelHeight <= 0 || !fits)
        return 0;
    const double step = plot.height / kGraphColumns;
    const double stride = std::ceil(labelHeight / step);
    return stride <= kGraphLines ? int(stride) : 0;
}

QVector<QRect> singularParts(const GraphPlot &plot, const QRect &area, const GraphTexts &texts)
{
    const int left = int(plot.left);
    const int top = int(plot.top);
    const int bottom = int(plot.top + plot.height);
    const int width = area.width();
    QVector<QRect> parts;
    parts << QRect(0, 0, width, top + 1) << QRect(0, bottom - 1, width, area.height() + 1 - bottom)
          << QRect(0, texts.captionTop, left, texts.captionHeight);
    for (int line = 1; line < kGraphLines; ++line) // a line lies at about its position
        parts << QRect(left, int(plot.lineY(line)) - 1, int(plot.width) + 1, 3);
    const int labelLeft = graphLabelLeft(plot, texts.labelWidth) - 1;
    for (int line = 0; texts.labelStride > 0 && line < kGraphLines; line += texts.labelStride) {
        const int labelTop = graphLabelTop(plot, line, texts.labelHeight);
        parts << QRect(labelLeft, labelTop, texts.labelWidth + 2, texts.labelHeight);
    }
    return parts;
}

QString profileColourName(QString text)
{
    return text.remove(1, 2);
}

} // namespace NetInfoRules
