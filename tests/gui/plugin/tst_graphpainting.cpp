// What the trend graph paints, recorded and as pixels.

#include <QApplication>
#include <QImage>
#include <QtTest>

#include "GraphTest.h"

namespace {

QLineF mirrored(const QLineF &line, int width)
{
    return QLineF(width - 1 - line.x1(), line.y1(), width - 1 - line.x2(), line.y2());
}

QList<QLineF> plain(const QList<RecordedLine> &lines)
{
    QList<QLineF> list;
    for (const RecordedLine &line : lines)
        list << line.line;
    return list;
}

} // namespace

class tst_GraphPainting : public GraphTest
{
    Q_OBJECT
private slots:
    void theBackgroundFillsTheWidget();
    void theFrameIsInset();
    void theGridHasTwelveColumnsAndElevenLines();
    void theElevenLinesAreLabelledFromTheMaximumDown();
    void aLabelStandsAtItsLine();
    void theCaptionIsRotatedBesideThePlot();
    void theLegendNamesBothCurves();
    void theCurvesAreScaledSegmentsOfTheirColour();
    void theDownloadCurveIsThicker();
    void theThicknessIsSeenOnEveryScreen_data();
    void theThicknessIsSeenOnEveryScreen();
    void theCurvesStayInThePlot_data();
    void theCurvesStayInThePlot();
    void withoutRoomForAPlotThereIsNone_data();
    void withoutRoomForAPlotThereIsNone();
    void aPlotTooNarrowForItsLabelsHasNone();
    void oneSampleIsNoCurve();
    void theScaleFollowsTheSamples();
    void samplesAboveTheScaleStayInThePlot();
    void rightToLeftIsTheMirrorImage_data();
    void rightToLeftIsTheMirrorImage();
    void theApplicationsDirectionCounts();
    void aNewLanguageIsPaintedNext();
    void nothingOverlaps_data();
    void nothingOverlaps();
    void longTextsAreShortened();
    void labelsInThePlotStandOnClearGround();
    void onlyPixelsAreCopied();
    void theCopyShowsWhatIsPaintedDirectly_data();
    void theCopyShowsWhatIsPaintedDirectly();
    void aFewPixels();
    void aFineScreenIsPaintedFine();
};

void tst_GraphPainting::theBackgroundFillsTheWidget()
{
    make();
    const auto painted = record();
    QVERIFY(!painted->rects.isEmpty());
    bool found = false;
    for (const RecordedRect &rect : painted->rects)
        found = found || (rect.rect == QRectF(0, 0, 600, 300) && rect.fill == m_background);
    QVERIFY(found);
    QVERIFY(m_graph->autoFillBackground());
}

void tst_GraphPainting::theFrameIsInset()
{
    make();
    const RecordedRect frame = record()->rects.last();
    QCOMPARE(frame.rect, QRectF(20, 60, 550, 230));
    QCOMPARE(frame.outline, m_ink);
    QVERIFY(!frame.fill.isValid());
}

void tst_GraphPainting::theGridHasTwelveColumnsAndElevenLines()
{
    make();
    const QList<RecordedLine> grid = record()->linesOf(m_ink, true);
    QList<QLineF> expected;
    for (int column = 1; column < 12; ++column) {
        const double x = 20 + column * (550 / 12.0);
        expected << QLineF(x, 60, x, 290);
    }
    for (int line = 0; line < 11; ++line) {
        const double y = 60 + line * (230 / 12.0);
        expected << QLineF(20, y, 570, y);
    }
    QCOMPARE(int(grid.size()), 22);
    for (int i = 0; i < expected.size(); ++i) {
        QCOMPARE(grid.at(i).line.p1(), expected.at(i).p1());
        QCOMPARE(grid.at(i).line.p2(), expected.at(i).p2());
    }
}

void tst_GraphPainting::theElevenLinesAreLabelledFromTheMaximumDown()
{
    make();
    QCOMPARE(labels(),
             QStringList({ "60", "55", "50", "45", "40", "35", "30", "25", "20", "15", "10" }));
}

void tst_GraphPainting::aLabelStandsAtItsLine()
{
    make();
    const auto painted = record();
    const int first = int(painted->textList().indexOf(QStringLiteral("60")));
    QVERIFY(first >= 0);
    for (int line = 0; line < 11; ++line) {
        const QRectF ink = painted->texts.at(first + line).ink();
        QVERIFY(qAbs(ink.center().y() - (60 + line * 230 / 12.0)) <= 2);
        QVERIFY(ink.left() > 570 && ink.right() < 600);
        QCOMPARE(painted->texts.at(first + line).colour, m_ink);
    }
}

void tst_GraphPainting::theCaptionIsRotatedBesideThePlot()
{
    make();
    const auto painted = record();
    const int caption = int(painted->textList().indexOf(QStringLiteral("IDS_TRENDS_SPEED-KBPS")));
    QVERIFY(caption >= 0);
    QCOMPARE(painted->texts.at(caption).angle, -90.0);
    const QRectF ink = painted->texts.at(caption).ink();
    QVERIFY(QRectF(0, 60, 20, 230).contains(ink));
    QVERIFY(qAbs(ink.center().y() - 175) <= 3);
    QCOMPARE(fakeHost().translationContexts, QStringList("NetInfoUIExPlugin"));
    QCOMPARE(fakeHost().formatterModules, QStringList("NetInfoUIExPlugin"));
}

void tst_GraphPainting::theLegendNamesBothCurves()
{
    make();
    const auto painted = record();
    const int upload = int(painted->textList().indexOf(QStringLiteral("IDS_TRENDS_UPLOAD_SPEED")));
    const int download
        = int(painted->textList().indexOf(QStringLiteral("IDS_TRENDS_DOWNLOAD_SPEED")));
    QVERIFY(upload >= 0 && download >= 0);
    const QRectF uploadInk = painted->texts.at(upload).ink();
    const QRectF downloadInk = painted->texts.at(download).ink();
    QVERIFY(uploadInk.bottom() < 60 && downloadInk.bottom() < 60);
    const QList<RecordedLine> uploadStrokes = painted->linesOf(m_uploadColour);
    const QList<RecordedLine> downloadStrokes = painted->linesOf(m_downloadColour);
    QCOMPARE(int(uploadStrokes.size()), 1); // no samples, no curves
    QCOMPARE(int(downloadStrokes.size()), 2);
    QVERIFY(uploadStrokes.first().line.x2() < uploadInk.left());
    QVERIFY(uploadInk.right() < downloadStrokes.first().line.x1());
    QVERIFY(downloadStrokes.first().line.x2() < downloadInk.left());
    QCOMPARE(downloadStrokes.last().line, downloadStrokes.first().line.translated(0, -1));
    QCOMPARE(painted->texts.at(upload).colour, m_ink);
    QCOMPARE(painted->texts.at(download).colour, m_ink);
}

void tst_GraphPainting::theCurvesAreScaledSegmentsOfTheirColour()
{
    make();
    m_graph->DrawGraph(60, 0);
    m_graph->DrawGraph(30, 15);
    m_graph->DrawGraph(0, 30);
    const double spacing = 550 / 12.0 / 11;
    const QList<QLineF> upload = plain(record()->linesOf(m_uploadColour)).mid(1);
    QCOMPARE(int(upload.size()), 2);
    QCOMPARE(upload.at(0), QLineF(570, 290, 570 - spacing, 175));
    QCOMPARE(upload.at(1), QLineF(570 - spacing, 175, 570 - 2 * spacing, 60));
    const QList<QLineF> download = plain(record()->linesOf(m_downloadColour)).mid(2);
    QCOMPARE(download.at(0), QLineF(570, 175, 570 - spacing, 232.5));
    QCOMPARE(download.at(2), QLineF(570 - spacing, 232.5, 570 - 2 * spacing, 290));
}

void tst_GraphPainting::theDownloadCurveIsThicker()
{
    make();
    for (int i = 0; i < 50; ++i)
        m_graph->DrawGraph(i, i % 4 ? i : 50 - i);
    const auto painted = record();
    const QList<QLineF> download = plain(painted->linesOf(m_downloadColour)).mid(2);
    QCOMPARE(int(download.size()), 2 * 49); // once more beside itself
    int steep = 0;
    for (int i = 0; i < 49; ++i) {
        const QLineF &line = download.at(2 * i);
        const bool isSteep = qAbs(line.dy()) > qAbs(line.dx());
        steep += isSteep;
        QCOMPARE(download.at(2 * i + 1), isSteep ? line.translated(-1, 0) : line.translated(0, -1));
    }
    QVERIFY(steep > 0 && steep < 49);
    QCOMPARE(int(painted->linesOf(m_uploadColour).size()), 1 + 49);
}

void tst_GraphPainting::theThicknessIsSeenOnEveryScreen_data()
{
    QTest::addColumn<double>("ratio");
    for (const double ratio : { 1.0, 1.25, 1.5, 2.0, 3.0 })
        QTest::addRow("%g", ratio) << ratio;
}

void tst_GraphPainting::theThicknessIsSeenOnEveryScreen()
{
    QFETCH(double, ratio);
    make();
    for (int i = 0; i < 20; ++i)
        m_graph->DrawGraph(15, 30); // level
    const QImage painted = image(ratio);
    int upload = 0;
    int download = 0;
    for (int y = 0; y < painted.height(); ++y) {
        upload += painted.pixelColor(int(550 * ratio), y) == m_uploadColour;
        download += painted.pixelColor(int(550 * ratio), y) == m_downloadColour;
    }
    QVERIFY(upload >= 1);
    QVERIFY2(download > upload, qPrintable(QString::number(download)));
}

void tst_GraphPainting::theCurvesStayInThePlot_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("left");
    QTest::newRow("left to right") << int(Qt::LeftToRight) << 20;
    QTest::newRow("right to left") << int(Qt::RightToLeft) << 29;
}

void tst_GraphPainting::theCurvesStayInThePlot()
{
    QFETCH(int, direction);
    QFETCH(int, left);
    QApplication::setLayoutDirection(Qt::LayoutDirection(direction));
    make();
    for (int i = 0; i < 500; ++i)
        m_graph->DrawGraph(i % 3 ? 60 : 0, i % 2 ? 60 : 0);
    const QImage painted = image();
    const QRect plot(left, 60, 551, 231);
    int inside = 0;
    for (int y = 45; y < 300; ++y) { // below the legend
        for (int x = 0; x < 600; ++x) {
            const QColor colour = painted.pixelColor(x, y);
            const bool isCurve = colour == m_uploadColour || colour == m_downloadColour;
            QVERIFY2(!isCurve || plot.contains(x, y), qPrintable(QString::number(x)));
            inside += isCurve;
        }
    }
    QVERIFY(inside > 10000);
}

void tst_GraphPainting::withoutRoomForAPlotThereIsNone_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("not high enough") << QSize(300, 70);
    QTest::newRow("not wide enough") << QSize(50, 300);
}

void tst_GraphPainting::withoutRoomForAPlotThereIsNone()
{
    QFETCH(QSize, size);
    make(size);
    addSamples(50);
    const auto painted = record();
    QVERIFY(painted->linesOf(m_ink, true).isEmpty());
    QVERIFY(painted->textList().filter(QStringLiteral("60")).isEmpty());
    QVERIFY(painted->textList().filter(QStringLiteral("IDS_TRENDS_SPEED")).isEmpty());
    QCOMPARE(int(painted->rects.size()), 1); // the background
    QVERIFY(painted->linesOf(m_uploadColour).size() <= 1);
}

void tst_GraphPainting::aPlotTooNarrowForItsLabelsHasNone()
{
    make(QSize(100, 300));
    m_graph->DrawGraph(0, 1e300);
    QVERIFY(labels().isEmpty());
    m_graph->resize(130, 300);
    QCOMPARE(labels().first(), QStringLiteral("2147483640"));
}

void tst_GraphPainting::oneSampleIsNoCurve()
{
    make();
    m_graph->DrawGraph(10, 20);
    QCOMPARE(int(record()->linesOf(m_uploadColour).size()), 1); // the legend's
    QCOMPARE(int(record()->linesOf(m_downloadColour).size()), 2);
}

void tst_GraphPainting::theScaleFollowsTheSamples()
{
    make();
    m_graph->DrawGraph(12.0, 130.0);
    QCOMPARE(labels().first(), QStringLiteral("180"));
    m_graph->DrawGraph(500.0, 10.0);
    QCOMPARE(labels().first(), QStringLiteral("540"));
    m_graph->DrawGraph(1000.0, 900.0); // the upload is not looked at
    QCOMPARE(labels().first(), QStringLiteral("960"));
    m_graph->DrawGraph(960.0, 960.0);
    QCOMPARE(labels().first(), QStringLiteral("960"));
    m_graph->DrawGraph(0.0, 0.0);
    QCOMPARE(labels(),
             QStringList(
                 { "960", "880", "800", "720", "640", "560", "480", "400", "320", "240", "160" }));
}

void tst_GraphPainting::samplesAboveTheScaleStayInThePlot()
{
    make();
    m_graph->DrawGraph(1000.0, 900.0);
    m_graph->DrawGraph(-5.0, 0.0);
    const QList<QLineF> upload = plain(record()->linesOf(m_uploadColour)).mid(1);
    QCOMPARE(upload.at(0).y1(), 290.0);
    QCOMPARE(upload.at(0).y2(), 60.0);
}

void tst_GraphPainting::theApplicationsDirectionCounts()
{
    make();
    m_graph->setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(record()->rects.last().rect.left(), 20.0);
}

void tst_GraphPainting::rightToLeftIsTheMirrorImage_data()
{
    QTest::addColumn<double>("speed");
    QTest::newRow("labels of two digits") << 0.0;
    QTest::newRow("labels of different lengths") << 1000.0;
    QTest::newRow("labels in the plot") << 125000.0;
}

void tst_GraphPainting::rightToLeftIsTheMirrorImage()
{
    QFETCH(double, speed);
    make();
    addSamples(40);
    m_graph->DrawGraph(0, speed);
    const auto left = record();
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const auto right = record();
    QCOMPARE(right->lines.size(), left->lines.size());
    for (int i = 0; i < left->lines.size(); ++i) {
        const QLineF line = mirrored(left->lines.at(i).line, 600);
        QVERIFY(right->lines.at(i).line == line
                || right->lines.at(i).line == QLineF(line.p2(), line.p1()));
        QCOMPARE(right->lines.at(i).colour, left->lines.at(i).colour);
    }
    QCOMPARE(right->rects.size(), left->rects.size());
    for (int i = 0; i < left->rects.size(); ++i) {
        const QRectF before = left->rects.at(i).rect;
        QVERIFY(qAbs(right->rects.at(i).rect.left() - (599 - before.right())) <= 1);
        QCOMPARE(right->rects.at(i).rect.size(), before.size());
    }
    QCOMPARE(right->textList(), left->textList());
    for (int i = 0; i < left->texts.size(); ++i) {
        const QRectF before = left->texts.at(i).ink();
        const QRectF after = right->texts.at(i).ink();
        QVERIFY(qAbs(after.center().x() - (599 - before.center().x())) <= 3);
        QVERIFY(qAbs(after.center().y() - before.center().y()) <= 3);
        QCOMPARE(right->texts.at(i).angle, -left->texts.at(i).angle);
    }
}

void tst_GraphPainting::aNewLanguageIsPaintedNext()
{
    make();
    QVERIFY(!image().isNull());
    const QImage before = image();
    fakeHost().language = QStringLiteral("_xx");
    QVERIFY(record()->textList().contains(QStringLiteral("IDS_TRENDS_UPLOAD_SPEED_xx")));
    QVERIFY(record()->textList().contains(QStringLiteral("IDS_TRENDS_SPEED_xx-KBPS")));
    QVERIFY(image() != before);
}

void tst_GraphPainting::nothingOverlaps_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("speed");
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("direction");
    const QList<QSize> sizes = { { 300, 200 }, { 420, 250 }, { 600, 300 }, { 1920, 1080 } };
    for (const QSize &size : sizes) {
        for (const double speed : { 0.0, 999.0, 9999.0, 125000.0, 1e300 }) {
            for (const int direction : { int(Qt::LeftToRight), int(Qt::RightToLeft) }) {
                for (const char *language : { "", "_a_language_of_long_words" }) {
                    QTest::addRow("%d x %d, %g%s, direction %d", size.width(), size.height(), speed,
                                  language, direction)
                        << size << speed << QString::fromLatin1(language) << direction;
                }
            }
        }
    }
}

void tst_GraphPainting::nothingOverlaps()
{
    QFETCH(QSize, size);
    QFETCH(double, speed);
    QFETCH(QString, language);
    QFETCH(int, direction);
    QApplication::setLayoutDirection(Qt::LayoutDirection(direction));
    fakeHost().language = language;
    make(size);
    addSamples(2000);
    m_graph->DrawGraph(0, speed);
    const auto painted = record();
    QCOMPARE(int(labels().size()), 11);
    QVERIFY(painted->texts.size() >= 14);
    for (int i = 0; i < painted->texts.size(); ++i) {
        const QRectF ink = painted->texts.at(i).ink();
        QVERIFY2(QRectF(QPointF(), QSizeF(size)).contains(ink),
                 qPrintable(painted->texts.at(i).text));
        for (int j = 0; j < i; ++j)
            QVERIFY2(!ink.intersects(painted->texts.at(j).ink()),
                     qPrintable(painted->texts.at(i).text + painted->texts.at(j).text));
        for (const QColor &colour : { m_uploadColour, m_downloadColour }) {
            for (const RecordedLine &line : painted->linesOf(colour)) {
                const QRectF box = QRectF(line.line.p1(), line.line.p2()).normalized();
                QVERIFY(!box.adjusted(0, 0, 0.5, 0.5).intersects(ink));
            }
        }
    }
}

void tst_GraphPainting::longTextsAreShortened()
{
    fakeHost().language = QStringLiteral(" and so on and so on and so on and so on and so on");
    make(QSize(300, 200));
    const QStringList texts = record()->textList();
    QCOMPARE(int(texts.filter(QRegularExpression(QStringLiteral("^IDS_.*…$"))).size()), 3);
}

void tst_GraphPainting::labelsInThePlotStandOnClearGround()
{
    make();
    addSamples(500);
    m_graph->DrawGraph(0, 125000);
    const auto painted = record();
    const int first = int(painted->textList().indexOf(QStringLiteral("125040")));
    QVERIFY(first >= 0);
    double newest = 0;
    for (const QLineF &line : plain(painted->linesOf(m_uploadColour)))
        newest = qMax(newest, line.x1());
    for (int line = 0; line < 11; ++line) {
        const QRectF ink = painted->texts.at(first + line).ink();
        QVERIFY(ink.left() > newest && ink.right() < 570);
        QVERIFY(ink.right() > 560); // the digits stand one below the other
        bool cleared = false;
        for (const RecordedRect &rect : painted->rects)
            cleared = cleared
                || (rect.fill == m_background && rect.rect.width() < 100
                    && rect.order < painted->texts.at(first).order
                    && rect.rect.contains(ink.adjusted(0.5, 0, -0.5, 0)));
        QVERIFY(cleared);
    }
}

void tst_GraphPainting::onlyPixelsAreCopied()
{
    make();
    addSamples(10);
    image();
    QCOMPARE(record()->pixmaps, 0); // what is no pixel image gets lines and texts
}

void tst_GraphPainting::theCopyShowsWhatIsPaintedDirectly_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("direction");
    QTest::newRow("left to right") << QSize(600, 300) << int(Qt::LeftToRight);
    QTest::newRow("right to left") << QSize(600, 300) << int(Qt::RightToLeft);
    QTest::newRow("small") << QSize(300, 200) << int(Qt::LeftToRight);
    QTest::newRow("large") << QSize(1920, 1080) << int(Qt::RightToLeft);
    QTest::newRow("odd") << QSize(517, 391) << int(Qt::LeftToRight);
    QTest::newRow("a plot of one pixel") << QSize(51, 71) << int(Qt::LeftToRight);
    QTest::newRow("without a plot") << QSize(40, 40) << int(Qt::LeftToRight);
}

void tst_GraphPainting::theCopyShowsWhatIsPaintedDirectly()
{
    QFETCH(QSize, size);
    QFETCH(int, direction);
    QApplication::setLayoutDirection(Qt::LayoutDirection(direction));
    make(size);
    addSamples(100);
    // A painter that shears, however little, cannot copy pixels.
    QImage direct(size, QImage::Format_RGB32);
    direct.fill(Qt::magenta);
    image(); // computes the plot
    {
        QPainter painter(&direct);
        painter.setTransform(QTransform(1, 0, 1e-9, 1, 0, 0));
        if (direction == Qt::LeftToRight)
            m_graph->drawLeftToRight(painter);
        else
            m_graph->drawRightToLeft(painter);
    }
    QImage copied = image();
    int different = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            different += copied.pixel(x, y) != direct.pixel(x, y);
    }
    QVERIFY2(different * 100 < size.width() * size.height(),
             qPrintable(QString::number(different)));
}

void tst_GraphPainting::aFewPixels()
{
    make();
    for (int i = 0; i < 20; ++i)
        m_graph->DrawGraph(15, 30);
    const QImage painted = image();
    QCOMPARE(painted.pixelColor(0, 0), m_background);
    QCOMPARE(painted.pixelColor(599, 299), m_background);
    QCOMPARE(painted.pixelColor(20, 250), m_ink); // the frame
    QCOMPARE(painted.pixelColor(560, 175), m_downloadColour);
    QCOMPARE(painted.pixelColor(560, 174), m_downloadColour);
    QCOMPARE(painted.pixelColor(560, 173), m_background);
    QCOMPARE(painted.pixelColor(560, 232), m_uploadColour);
    QCOMPARE(painted.pixelColor(560, 231), m_background);
    QCOMPARE(painted.pixelColor(560, 233), m_background);
}

void tst_GraphPainting::aFineScreenIsPaintedFine()
{
    make();
    for (int i = 0; i < 20; ++i)
        m_graph->DrawGraph(15, 30);
    const QImage coarse = image(1);
    const QImage fine = image(2);
    QCOMPARE(fine.size(), QSize(1200, 600));
    QCOMPARE(fine.pixelColor(1120, 464), m_uploadColour);
    QCOMPARE(fine.pixelColor(0, 0), m_background);
    QCOMPARE(fine.pixelColor(1199, 599), m_background);
    // Not the coarse picture enlarged: texts have finer edges.
    const QImage enlarged = coarse.scaled(fine.size(), Qt::IgnoreAspectRatio);
    int different = 0;
    for (int x = 44; x < 400; ++x)
        different += fine.pixel(x, 60) != enlarged.pixel(x, 60);
    QVERIFY(different > 20);
    QCOMPARE(image(1), coarse); // and back
}

QTEST_MAIN(tst_GraphPainting)
#include "tst_graphpainting.moc"
