#pragma once
// The trend graph's decisions: how its scale grows, which samples it shows, and where they lie.
// Positions are in the widget's logical pixels, as for a left-to-right layout; y grows downwards.

#include <QLineF>
#include <QList>
#include <QRect>
#include <QRectF>
#include <QString>
#include <QVector>

namespace NetInfoRules {

constexpr int kGraphColumns = 12;
constexpr int kGraphLines = 11;
constexpr int kGraphDotPeriod = 4; //!< from dot to dot of the grid, in pixels
constexpr int kGraphLabelGap = 3; //!< beside a label, in pixels
constexpr int kFirstGraphScale = 60; //!< also the step in which the scale grows

//! \a value without its fraction. What an int cannot hold becomes its nearest number, what is no
//! number 0.
[[nodiscard]] int truncatedSample(double value);

//! The scale's maximum after a sample pair: the next multiple of 60 above what exceeds \a maximum,
//! else \a maximum; at most 2147483640. While the download exceeds it, the upload is not looked at.
[[nodiscard]] int grownGraphScale(int maximum, double up, double down);

//! How many of the \a count newest-first entries are dropped from the end before a new one comes.
[[nodiscard]] int entriesToDrop(int count, int limit);

//! The label of horizontal line \a line, 0 at the plot's top.
[[nodiscard]] int graphScaleLabel(int maximum, int line);

//! The plot inside the widget.
struct GraphPlot
{
    double top = 0.0;
    double left = 0.0;
    double height = 0.0; //!< below 0 in a widget without room
    double width = 0.0;
    double secondLeft = 0.0; //!< equal to left
    double columnStep = 0.0;

    [[nodiscard]] bool operator==(const GraphPlot &other) const;
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] double lineY(int line) const; //!< of horizontal line \a line, 0 at the top
};

//! The plot of a widget that is \a area.
[[nodiscard]] GraphPlot graphPlot(const QRect &area);

//! Whether scale labels \a width pixels wide fit between the plot and the widget's edge.
[[nodiscard]] bool labelsFitMargin(int width);

//! Where the labels begin: beside \a plot, or inside it when they do not fit.
[[nodiscard]] int graphLabelLeft(const GraphPlot &plot, int labelWidth);

//! Where the label of \a line begins.
[[nodiscard]] int graphLabelTop(const GraphPlot &plot, int line, int labelHeight);

//! Where the curves lie: the newest sample at the right edge, at the left one when mirrored.
struct GraphCurveArea
{
    double right = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
    double spacing = 0.0; //!< between two samples
    int maximum = 0; //!< speed at the top
    bool mirrored = false;
    double mirrorSum = 0.0; //!< x becomes mirrorSum - x
};

//! The curves' part of \a plot, in a widget that is \a area: all of it, or what labels that do not
//! fit beside it leave.
[[nodiscard]] GraphCurveArea graphCurveArea(const GraphPlot &plot, const QRect &area,
                                            int labelWidth, int maximum, bool mirrored);

//! The distance of two samples in pixels: a whole number of samples to a column; 4 or more apart,
//! and a hundredth of the plot's height, where the column has room for two; never less than 1.
[[nodiscard]] double sampleSpacing(const GraphPlot &plot);

//! How many of \a count samples \a area shows.
[[nodiscard]] int visibleSamples(const GraphCurveArea &area, int count);

//! The position of the sample that is \a age samples older than the newest one.
[[nodiscard]] double sampleX(const GraphCurveArea &area, int age);

//! The height at which \a speed is drawn. Outside the scale the nearest edge; no number is 0.
[[nodiscard]] double sampleY(const GraphCurveArea &area, double speed);

//! Replaces \a lines by the segments between the visible samples of \a history, newest first.
void curveLines(const GraphCurveArea &area, const QList<double> &history, QVector<QLineF> &lines);

//! Doubles the thickness of \a lines: behind each comes one a pixel aside, across its direction: a
//! pixel up, or \a across to the right when it is steep.
void thickenLines(QVector<QLineF> &lines, double across);

//! Which lines get their label: each n-th, so that labels of this size, in pixels, do not overlap.
//! 0: none, also where the plot is too narrow for them.
[[nodiscard]] int labelStride(const GraphPlot &plot, int labelWidth, int labelHeight);

//! What the texts beside the plot take, in pixels.
struct GraphTexts
{
    int labelWidth = 0; //!< of the widest label
    int labelHeight = 0;
    int labelStride = 0; //!< each labelStride-th line has a label; 0: none
    int captionTop = 0;
    int captionHeight = 0; //!< along the plot
};

//! The parts of the widget \a area that are like no other: what is above and below \a plot, the
//! caption, the lines and their labels. In the rest the same rows repeat themselves every
//! kGraphDotPeriod.
[[nodiscard]] QVector<QRect> singularParts(const GraphPlot &plot, const QRect &area,
                                           const GraphTexts &texts);

//! \a text without the two characters after its first one: "#FF102030" becomes "#102030".
[[nodiscard]] QString profileColourName(QString text);

} // namespace NetInfoRules
