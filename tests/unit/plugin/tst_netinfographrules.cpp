#include "NetInfoGraphRules.h"

#include <QtTest>

#include <limits>

using namespace NetInfoRules;

namespace {

constexpr int kLargestInt = std::numeric_limits<int>::max();
constexpr int kSmallestInt = std::numeric_limits<int>::min();
constexpr int kLargestScale = 2147483640;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

GraphCurveArea areaOf(double width, double spacing)
{
    GraphCurveArea area;
    area.right = 20 + width;
    area.top = 60;
    area.width = width;
    area.height = 120;
    area.spacing = spacing;
    area.maximum = 60;
    area.mirrorSum = width + 49;
    return area;
}

} // namespace

class tst_NetInfoGraphRules : public QObject
{
    Q_OBJECT
private slots:
    void samplesAreTruncated_data();
    void samplesAreTruncated();
    void theScaleGrows_data();
    void theScaleGrows();
    void theScaleNeverShrinks();
    void entriesAreDroppedByTwo_data();
    void entriesAreDroppedByTwo();
    void aLongHistoryStaysWithinOneOfItsLimit();
    void labelsFallByTwelfths_data();
    void labelsFallByTwelfths();
    void thePlotIsInset_data();
    void thePlotIsInset();
    void linesDivideThePlotInTwelve();
    void samplesFillColumns_data();
    void samplesFillColumns();
    void whatFitsIsVisible_data();
    void whatFitsIsVisible();
    void twelveColumnsShowTheirSamplesAndOneMore();
    void theNewestSampleIsAtTheReadingEnd();
    void speedsBecomeHeights_data();
    void speedsBecomeHeights();
    void anEmptyAreaShowsNothing();
    void aCurveJoinsTheVisibleSamples();
    void aCurveOfLessThanTwoSamplesIsEmpty();
    void longLabelsTakeTheirRoomFromTheCurves_data();
    void longLabelsTakeTheirRoomFromTheCurves();
    void labelsDoNotOverlap_data();
    void labelsDoNotOverlap();
    void aNarrowPlotHasNoLabels();
    void thickSegmentsHaveATwinAcrossTheirDirection();
    void twoCharactersOfAColourGo_data();
    void twoCharactersOfAColourGo();
};

void tst_NetInfoGraphRules::samplesAreTruncated_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("expected");
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("a fraction is cut") << 60.999 << 60;
    QTest::newRow("towards zero") << -60.999 << -60;
    QTest::newRow("largest int") << 2147483647.0 << kLargestInt;
    QTest::newRow("above the largest int") << 2147483648.0 << kLargestInt;
    QTest::newRow("smallest int") << -2147483648.0 << kSmallestInt;
    QTest::newRow("below the smallest int") << -2147483649.0 << kSmallestInt;
    QTest::newRow("huge") << 1e308 << kLargestInt;
    QTest::newRow("infinite") << kInfinity << kLargestInt;
    QTest::newRow("minus infinite") << -kInfinity << kSmallestInt;
    QTest::newRow("not a number") << kNotANumber << 0;
}

void tst_NetInfoGraphRules::samplesAreTruncated()
{
    QFETCH(double, value);
    QFETCH(int, expected);
    QCOMPARE(truncatedSample(value), expected);
}

void tst_NetInfoGraphRules::theScaleGrows_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<double>("up");
    QTest::addColumn<double>("down");
    QTest::addColumn<int>("expected");
    QTest::newRow("nothing") << 60 << 0.0 << 0.0 << 60;
    QTest::newRow("a download grows it") << 60 << 12.0 << 130.0 << 180;
    QTest::newRow("an upload grows it") << 180 << 500.0 << 10.0 << 540;
    QTest::newRow("a download above hides the upload") << 540 << 1000.0 << 900.0 << 960;
    QTest::newRow("a download equal does not hide it") << 540 << 1000.0 << 540.0 << 1020;
    QTest::newRow("an upload equal to the scale") << 60 << 60.0 << 0.0 << 60;
    QTest::newRow("a download equal to the scale") << 60 << 0.0 << 60.0 << 60;
    QTest::newRow("a fraction above is no more") << 60 << 60.99 << 60.99 << 60;
    QTest::newRow("one above") << 60 << 0.0 << 61.0 << 120;
    QTest::newRow("one below the next step") << 60 << 119.0 << 0.0 << 120;
    QTest::newRow("the next step itself") << 60 << 120.0 << 0.0 << 180;
    QTest::newRow("negative") << 60 << -500.0 << -500.0 << 60;
    QTest::newRow("not a number") << 60 << kNotANumber << kNotANumber << 60;
    QTest::newRow("an infinite download") << 60 << 0.0 << kInfinity << kLargestScale;
    QTest::newRow("an infinite upload") << 60 << kInfinity << 0.0 << kLargestScale;
    QTest::newRow("minus infinite") << 60 << -kInfinity << -kInfinity << 60;
    QTest::newRow("the last step") << 60 << 0.0 << 2147483580.0 << kLargestScale;
    QTest::newRow("one below it") << 60 << 0.0 << 2147483579.0 << 2147483580;
    QTest::newRow("at the end") << kLargestScale << kInfinity << kInfinity << kLargestScale;
}

void tst_NetInfoGraphRules::theScaleGrows()
{
    QFETCH(int, maximum);
    QFETCH(double, up);
    QFETCH(double, down);
    QFETCH(int, expected);
    QCOMPARE(grownGraphScale(maximum, up, down), expected);
}

void tst_NetInfoGraphRules::theScaleNeverShrinks()
{
    int maximum = kFirstGraphScale;
    for (int i = 0; i < 5000; ++i) {
        const int grown = grownGraphScale(maximum, (i * 7919) % 100003, (i * 104729) % 99991);
        QVERIFY(grown >= maximum);
        QCOMPARE(grown % 60, 0);
        maximum = grown;
    }
    QVERIFY(maximum > 60);
}

void tst_NetInfoGraphRules::entriesAreDroppedByTwo_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("expected");
    QTest::newRow("empty") << 0 << 1080 << 0;
    QTest::newRow("at the limit") << 1080 << 1080 << 0;
    QTest::newRow("one above") << 1081 << 1080 << 2;
    QTest::newRow("no screen, nothing yet") << 0 << 0 << 0;
    QTest::newRow("no screen, one entry") << 1 << 0 << 1;
    QTest::newRow("no screen, two entries") << 2 << 0 << 2;
}

void tst_NetInfoGraphRules::entriesAreDroppedByTwo()
{
    QFETCH(int, count);
    QFETCH(int, limit);
    QFETCH(int, expected);
    QCOMPARE(entriesToDrop(count, limit), expected);
}

void tst_NetInfoGraphRules::aLongHistoryStaysWithinOneOfItsLimit()
{
    int count = 0;
    int most = 0;
    for (int i = 0; i < 5000; ++i) {
        count += 1 - entriesToDrop(count, 1080);
        most = qMax(most, count);
        QVERIFY(i < 1080 || count >= 1080);
    }
    QCOMPARE(most, 1081);
}

void tst_NetInfoGraphRules::labelsFallByTwelfths_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<QList<int>>("labels");
    QTest::newRow("the first scale")
        << 60 << QList<int> { 60, 55, 50, 45, 40, 35, 30, 25, 20, 15, 10 };
    QTest::newRow("the largest scale")
        << kLargestScale
        << QList<int> { 2147483640, 1968526670, 1789569700, 1610612730, 1431655760, 1252698790,
                        1073741820, 894784850,  715827880,  536870910,  357913940 };
}

void tst_NetInfoGraphRules::labelsFallByTwelfths()
{
    QFETCH(int, maximum);
    QFETCH(QList<int>, labels);
    QList<int> shown;
    for (int line = 0; line < kGraphLines; ++line)
        shown << graphScaleLabel(maximum, line);
    QCOMPARE(shown, labels);
}

void tst_NetInfoGraphRules::thePlotIsInset_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QRectF>("plot");
    QTest::newRow("300 x 200") << QRect(0, 0, 300, 200) << QRectF(20, 60, 250, 130);
    QTest::newRow("600 x 300") << QRect(0, 0, 600, 300) << QRectF(20, 60, 550, 230);
    QTest::newRow("not at the origin") << QRect(7, 5, 300, 200) << QRectF(27, 65, 250, 130);
    QTest::newRow("smallest with a plot") << QRect(0, 0, 51, 71) << QRectF(20, 60, 1, 1);
    QTest::newRow("not wide enough") << QRect(0, 0, 50, 71) << QRectF(20, 60, 0, 1);
    QTest::newRow("not high enough") << QRect(0, 0, 51, 70) << QRectF(20, 60, 1, 0);
    QTest::newRow("without a plot") << QRect(0, 0, 50, 70) << QRectF(20, 60, 0, 0);
    QTest::newRow("one pixel") << QRect(0, 0, 1, 1) << QRectF(20, 60, -49, -69);
}

void tst_NetInfoGraphRules::thePlotIsInset()
{
    QFETCH(QRect, area);
    QFETCH(QRectF, plot);
    const GraphPlot result = graphPlot(area);
    QCOMPARE(result.left, plot.left());
    QCOMPARE(result.secondLeft, plot.left());
    QCOMPARE(result.top, plot.top());
    QCOMPARE(result.width, plot.width());
    QCOMPARE(result.height, plot.height());
    QCOMPARE(result.columnStep, plot.width() / 12.0);
    QCOMPARE(result.isEmpty(), plot.width() <= 0 || plot.height() <= 0);
}

void tst_NetInfoGraphRules::linesDivideThePlotInTwelve()
{
    const GraphPlot plot = graphPlot(QRect(0, 0, 300, 190));
    QCOMPARE(plot.lineY(0), 60.0);
    QCOMPARE(plot.lineY(1), 70.0);
    QCOMPARE(plot.lineY(10), 160.0);
    QCOMPARE(plot.lineY(12), 180.0);
}

void tst_NetInfoGraphRules::samplesFillColumns_data()
{
    QTest::addColumn<double>("columnStep");
    QTest::addColumn<double>("height");
    QTest::addColumn<double>("spacing");
    QTest::newRow("one sample") << 4.0 << 100.0 << 4.0;
    QTest::newRow("not yet two") << 7.9 << 100.0 << 7.9;
    QTest::newRow("two samples") << 8.0 << 100.0 << 4.0;
    QTest::newRow("five samples") << 21.0 << 100.0 << 4.2;
    QTest::newRow("eleven samples") << 45.9 << 100.0 << 45.9 / 11;
    QTest::newRow("as high as 4 pixels allow") << 40.0 << 400.0 << 4.0;
    QTest::newRow("higher") << 40.0 << 401.0 << 40.0 / 9;
    QTest::newRow("twice as high") << 40.0 << 800.0 << 8.0;
    QTest::newRow("too high for two") << 12.0 << 800.0 << 12.0;
    QTest::newRow("a narrow column") << 2.0 << 100.0 << 2.0;
    QTest::newRow("narrower than a pixel") << 0.5 << 100.0 << 1.0;
    QTest::newRow("no room") << -4.0 << -5.0 << 1.0;
}

void tst_NetInfoGraphRules::samplesFillColumns()
{
    QFETCH(double, columnStep);
    QFETCH(double, height);
    QFETCH(double, spacing);
    GraphPlot plot;
    plot.columnStep = columnStep;
    plot.height = height;
    QCOMPARE(sampleSpacing(plot), spacing);
}

void tst_NetInfoGraphRules::whatFitsIsVisible_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("visible");
    QTest::newRow("no samples") << 250.0 << 0 << 0;
    QTest::newRow("one sample") << 250.0 << 1 << 1;
    QTest::newRow("fewer than fit") << 250.0 << 50 << 50;
    QTest::newRow("as many as fit") << 250.0 << 51 << 51;
    QTest::newRow("more than fit") << 250.0 << 52 << 51;
    QTest::newRow("far more than fit") << 250.0 << 100000000 << 51;
    QTest::newRow("one distance less a bit") << 4.9 << 100 << 1;
    QTest::newRow("no room") << 0.0 << 100 << 0;
    QTest::newRow("less than no room") << -5.0 << 100 << 0;
}

void tst_NetInfoGraphRules::whatFitsIsVisible()
{
    QFETCH(double, width);
    QFETCH(int, count);
    QFETCH(int, visible);
    QCOMPARE(visibleSamples(areaOf(width, 5), count), visible);
}

void tst_NetInfoGraphRules::twelveColumnsShowTheirSamplesAndOneMore()
{
    for (int width = 48; width < 4000; ++width) {
        const GraphPlot plot = graphPlot(QRect(0, 0, width + 50, 300));
        const int visible = visibleSamples(areaOf(width, sampleSpacing(plot)), 1000000);
        QCOMPARE(visible, 12 * int(plot.columnStep / 4.0) + 1);
    }
}

void tst_NetInfoGraphRules::theNewestSampleIsAtTheReadingEnd()
{
    GraphCurveArea area = areaOf(250, 5);
    QCOMPARE(sampleX(area, 0), 270.0);
    QCOMPARE(sampleX(area, 1), 265.0);
    QCOMPARE(sampleX(area, 50), 20.0);
    area.mirrored = true;
    QCOMPARE(sampleX(area, 0), 29.0);
    QCOMPARE(sampleX(area, 1), 34.0);
    QCOMPARE(sampleX(area, 50), 279.0);
}

void tst_NetInfoGraphRules::speedsBecomeHeights_data()
{
    QTest::addColumn<double>("speed");
    QTest::addColumn<double>("y");
    QTest::newRow("zero is the bottom") << 0.0 << 180.0;
    QTest::newRow("half of the scale") << 30.0 << 120.0;
    QTest::newRow("the maximum is the top") << 60.0 << 60.0;
    QTest::newRow("above the maximum") << 61.0 << 60.0;
    QTest::newRow("negative") << -1.0 << 180.0;
    QTest::newRow("huge") << 1e308 << 60.0;
    QTest::newRow("tiny") << 1e-308 << 180.0;
    QTest::newRow("infinite") << kInfinity << 60.0;
    QTest::newRow("minus infinite") << -kInfinity << 180.0;
    QTest::newRow("not a number") << kNotANumber << 180.0;
}

void tst_NetInfoGraphRules::speedsBecomeHeights()
{
    QFETCH(double, speed);
    QFETCH(double, y);
    QCOMPARE(sampleY(areaOf(250, 5), speed), y);
}

void tst_NetInfoGraphRules::anEmptyAreaShowsNothing()
{
    GraphCurveArea area = areaOf(250, 5);
    area.maximum = 0;
    QCOMPARE(sampleY(area, 10), 180.0);
    area.height = 0;
    QCOMPARE(visibleSamples(area, 10), 0);
    area = areaOf(250, 0);
    QCOMPARE(visibleSamples(area, 10), 0);
}

void tst_NetInfoGraphRules::aCurveJoinsTheVisibleSamples()
{
    QVector<QLineF> lines(99);
    curveLines(areaOf(10, 5), { 60, 30, 0, 15, 45 }, lines);
    QCOMPARE(lines, QVector<QLineF>({ { 30, 60, 25, 120 }, { 25, 120, 20, 180 } }));
}

void tst_NetInfoGraphRules::aCurveOfLessThanTwoSamplesIsEmpty()
{
    QVector<QLineF> lines(99);
    curveLines(areaOf(250, 5), {}, lines);
    QVERIFY(lines.isEmpty());
    lines.resize(99);
    curveLines(areaOf(250, 5), { 30 }, lines);
    QVERIFY(lines.isEmpty());
    lines.resize(99);
    curveLines(areaOf(-30, 5), { 30, 20, 10 }, lines);
    QVERIFY(lines.isEmpty());
}

void tst_NetInfoGraphRules::longLabelsTakeTheirRoomFromTheCurves_data()
{
    QTest::addColumn<int>("labelWidth");
    QTest::addColumn<double>("right");
    QTest::addColumn<double>("width");
    QTest::newRow("no labels") << 0 << 270.0 << 250.0;
    QTest::newRow("as wide as the margin") << 26 << 270.0 << 250.0;
    QTest::newRow("a pixel wider") << 27 << 237.0 << 217.0;
    QTest::newRow("wider than the plot") << 300 << -36.0 << -56.0;
}

void tst_NetInfoGraphRules::longLabelsTakeTheirRoomFromTheCurves()
{
    QFETCH(int, labelWidth);
    QFETCH(double, right);
    QFETCH(double, width);
    const QRect area(0, 0, 300, 200);
    const GraphPlot plot = graphPlot(area);
    const GraphCurveArea curves = graphCurveArea(plot, area, labelWidth, 180, true);
    QCOMPARE(curves.right, right);
    QCOMPARE(curves.width, width);
    QCOMPARE(curves.top, 60.0);
    QCOMPARE(curves.height, 130.0);
    QCOMPARE(curves.spacing, plot.columnStep / 5);
    QCOMPARE(curves.maximum, 180);
    QCOMPARE(curves.mirrored, true);
    QCOMPARE(curves.mirrorSum, 299.0);
}

void tst_NetInfoGraphRules::labelsDoNotOverlap_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("stride");
    QTest::newRow("lines 10 apart") << 190 << 1;
    QTest::newRow("lines less than 10 apart") << 189 << 2;
    QTest::newRow("lines 5 apart") << 130 << 2;
    QTest::newRow("lines a pixel apart") << 82 << 10;
    QTest::newRow("one label fits") << 81 << 11;
    QTest::newRow("none fits") << 80 << 0;
    QTest::newRow("no plot") << 70 << 0;
}

void tst_NetInfoGraphRules::labelsDoNotOverlap()
{
    QFETCH(int, height);
    QFETCH(int, stride);
    QCOMPARE(labelStride(graphPlot(QRect(0, 0, 300, height)), 20, 10), stride);
    QCOMPARE(labelStride(graphPlot(QRect(0, 0, 300, height)), 20, 0), 0);
}

void tst_NetInfoGraphRules::aNarrowPlotHasNoLabels()
{
    const GraphPlot plot = graphPlot(QRect(0, 0, 100, 300)); // 50 wide
    QCOMPARE(labelStride(plot, 44, 10), 1);
    QCOMPARE(labelStride(plot, 45, 10), 0);
    const GraphPlot sliver = graphPlot(QRect(0, 0, 51, 300));
    QCOMPARE(labelStride(sliver, 26, 10), 1); // beside it
    QCOMPARE(labelStride(sliver, 27, 10), 0);
    QCOMPARE(labelStride(graphPlot(QRect(0, 0, 50, 300)), 10, 10), 0);
}

void tst_NetInfoGraphRules::thickSegmentsHaveATwinAcrossTheirDirection()
{
    QVector<QLineF> lines = { { 0, 0, 4, 1 }, { 0, 0, 4, 9 }, { 0, 0, 4, -9 }, { 0, 0, 4, 4 } };
    thickenLines(lines, -1);
    QCOMPARE(lines,
             QVector<QLineF>({ { 0, 0, 4, 1 },
                               { 0, -1, 4, 0 },
                               { 0, 0, 4, 9 },
                               { -1, 0, 3, 9 },
                               { 0, 0, 4, -9 },
                               { -1, 0, 3, -9 },
                               { 0, 0, 4, 4 },
                               { 0, -1, 4, 3 } }));
    lines.clear();
    thickenLines(lines, -1);
    QVERIFY(lines.isEmpty());
}

void tst_NetInfoGraphRules::twoCharactersOfAColourGo_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::newRow("a whole colour") << "#FF102030"
                                    << "#102030";
    QTest::newRow("no colour") << ""
                               << "";
    QTest::newRow("the sign alone") << "#"
                                    << "#";
    QTest::newRow("one character less") << "#F"
                                        << "#";
    QTest::newRow("a short one") << "#FF10"
                                 << "#10";
    QTest::newRow("another sign") << "xFFred"
                                  << "xred";
}

void tst_NetInfoGraphRules::twoCharactersOfAColourGo()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QCOMPARE(profileColourName(text), name);
}

QTEST_GUILESS_MAIN(tst_NetInfoGraphRules)
#include "tst_netinfographrules.moc"
