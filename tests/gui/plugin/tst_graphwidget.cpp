// The trend graph's life: profile, histories, repaints, and input that makes no sense.

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QScreen>
#include <QtTest>

#include <limits>

#include "GraphTest.h"
#include "NetInfoUILogic.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

QString sourcePath()
{
    return QStringLiteral("../../src/NetInfoUIExPlugin/NetInfoGraphWidget.cpp");
}

} // namespace

class tst_GraphWidget : public GraphTest
{
    Q_OBJECT
private slots:
    void theProfileIsReadOnce();
    void itPaintsItsBackgroundItself();
    void theFourthFontIsUsed();
    void aProfileThatCannotBeReadIsLogged();
    void aProfileThatEndsEarlyGivesItsFirstEntries();
    void aShortProfileStillPaints_data();
    void aShortProfileStillPaints();
    void hostileColoursStillPaint_data();
    void hostileColoursStillPaint();
    void hostileFontSizesStillPaint_data();
    void hostileFontSizesStillPaint();
    void aClearBackgroundShowsThePalette();
    void withoutABackgroundThePaletteDecides();
    void theUploadHistoryIsTrimmedTheDownloadIsNot();
    void hostileSamplesStayInThePlot_data();
    void hostileSamplesStayInThePlot();
    void anySizePaints_data();
    void anySizePaints();
    void paintingIsTraced();
    void aSampleSchedulesOnePaint();
    void aPartAsksForOneWholePaint();
    void aGraphThatIsNeverWholeDoesNotPaintForEver();
    void itPaintsWithoutAStatisticsSource();
    void paintingBeforeAnyPaintEventIsHarmless();
    void aPainterThatPaintsNothingIsHarmless();
    void aMagnifiedPaintTakesNoMemory();
};

void tst_GraphWidget::theProfileIsReadOnce()
{
    make();
    const QString reader = QStringLiteral("GetSettingsFromXML: Entered");
    QCOMPARE(int(m_log->takeLines().filter(reader).size()), 1);
    addSamples(3);
    image();
    QVERIFY(m_log->takeLines().filter(reader).isEmpty());
}

void tst_GraphWidget::itPaintsItsBackgroundItself()
{
    make();
    QVERIFY(m_graph->testAttribute(Qt::WA_OpaquePaintEvent)); // nothing is painted below it
    QVERIFY(m_graph->autoFillBackground());
}

void tst_GraphWidget::theFourthFontIsUsed()
{
    const QFont before = QApplication::font();
    QFont bold = before;
    bold.setBold(true);
    QApplication::setFont(bold);
    make();
    QApplication::setFont(before);
    const auto painted = record();
    for (const RecordedText &text : std::as_const(painted->texts)) {
        QCOMPARE(text.font.family(), QStringLiteral("Sans Serif"));
        QCOMPARE(int(text.font.weight()), int(QFont::Normal)); // whatever the profile's style is
    }
}

void tst_GraphWidget::aProfileThatCannotBeReadIsLogged()
{
    QVERIFY(QFile::remove(m_folder->profilePath()));
    m_log->expectWarning(QStringLiteral("does not exist"));
    make();
    QCOMPARE(m_log->takeLines().last(),
             QStringLiteral("<time>: ") + sourcePath()
                 + QStringLiteral(": init: Get Config data failed"));
    addSamples(30);
    QCOMPARE(labels().first(), QStringLiteral("60"));
}

void tst_GraphWidget::aProfileThatEndsEarlyGivesItsFirstEntries()
{
    m_folder->writeProfile("<TrendsCtrlProfile><Color color=\"#FF123456\"/><Color");
    m_log->expectWarning(QStringLiteral("readGroupInfo:"));
    m_log->expectWarning(QStringLiteral("Read Fle Error"));
    make();
    QVERIFY(m_log->takeLines().last().endsWith(QLatin1String("Get Config data failed")));
    QCOMPARE(image().pixelColor(1, 1), QColor(0x12, 0x34, 0x56));
}

void tst_GraphWidget::aShortProfileStillPaints_data()
{
    QTest::addColumn<int>("colours");
    for (int count = 0; count <= 6; ++count)
        QTest::addRow("%d colours", count) << count;
}

void tst_GraphWidget::aShortProfileStillPaints()
{
    QFETCH(int, colours);
    m_folder->writeProfile(
        PluginFolder::profile(QList<QByteArray>({ "#FF202020", "#FF111111", "#FFFFFF00",
                                                  "#FF0000FF", "#FF808080", "#FFABCDEF" })
                                  .mid(0, colours)));
    make();
    addSamples(60);
    const auto painted = record();
    QCOMPARE(int(painted->textList().size()), 14);
    if (colours == 0)
        return;
    // What is missing is painted in what reads on the background.
    const QColor upload = colours > 2 ? QColor(255, 255, 0) : QColor(Qt::white);
    QVERIFY(!painted->linesOf(upload).isEmpty());
    const QColor ink = colours > 4 ? QColor(128, 128, 128) : QColor(Qt::white);
    QCOMPARE(painted->texts.first().colour, ink);
}

void tst_GraphWidget::hostileColoursStillPaint_data()
{
    QTest::addColumn<QByteArray>("colour");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("the sign alone") << QByteArray("#");
    QTest::newRow("two characters") << QByteArray("#F");
    QTest::newRow("no digits") << QByteArray("#FFGGHHII");
    QTest::newRow("words") << QByteArray("light blue");
    QTest::newRow("too long") << QByteArray("#FF") + QByteArray(100000, '1');
    QTest::newRow("no letters") << QByteArray("\xe2\x80\xae\xe2\x80\x8f");
    QTest::newRow("with an opacity") << QByteArray("#FF80102030");
    QTest::newRow("a clear one") << QByteArray("tzzransparent");
}

void tst_GraphWidget::hostileColoursStillPaint()
{
    QFETCH(QByteArray, colour);
    for (int position = 0; position < 5; ++position) {
        QList<QByteArray> colours
            = { "#FF202020", "#FF111111", "#FFFFFF00", "#FF0000FF", "#FF808080" };
        colours[position] = colour;
        m_folder->writeProfile(PluginFolder::profile(colours));
        make();
        addSamples(60);
        QCOMPARE(int(record()->textList().size()), 14);
        QVERIFY(image().pixelColor(1, 1) != QColor(Qt::magenta));
    }
}

void tst_GraphWidget::hostileFontSizesStillPaint_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::addColumn<int>("pixels");
    for (const char *size :
         { "", "0", "-1", "-2147483648", "99999999999999999999", "1e3", "ten", "0x10" })
        QTest::newRow(size[0] ? size : "empty") << QByteArray(size) << 10;
    for (const int size : { 1, 9, 13, 14 })
        QTest::addRow("%d", size) << QByteArray::number(size) << size;
    for (const int size : { 15, 500, 2147483647 }) // more than the margins hold
        QTest::addRow("%d", size) << QByteArray::number(size) << 14;
}

void tst_GraphWidget::hostileFontSizesStillPaint()
{
    QFETCH(QByteArray, size);
    QFETCH(int, pixels);
    m_folder->writeProfile(PluginFolder::profile(
        { "#FF202020", "#FF111111", "#FFFFFF00", "#FF0000FF", "#FF808080" }, size));
    make();
    addSamples(60);
    const auto painted = record();
    QVERIFY(painted->textList().contains(QStringLiteral("IDS_TRENDS_SPEED-KBPS")));
    for (const RecordedText &text : painted->texts) {
        QCOMPARE(text.font.pixelSize(), pixels);
        QVERIFY(QRectF(0, 0, 600, 300).contains(text.ink()));
    }
    image();
}

void tst_GraphWidget::aClearBackgroundShowsThePalette()
{
    m_folder->writeProfile(PluginFolder::profile(
        { "tzzransparent", "#FF111111", "#FFFFFF00", "#FF0000FF", "#FF808080" }));
    make();
    QVERIFY(!m_graph->testAttribute(Qt::WA_OpaquePaintEvent));
    QPalette palette = m_graph->palette();
    palette.setColor(QPalette::Window, Qt::darkGreen);
    m_graph->setPalette(palette);
    QCOMPARE(image().pixelColor(1, 1), QColor(Qt::darkGreen));
}

void tst_GraphWidget::withoutABackgroundThePaletteDecides()
{
    m_folder->writeProfile("<TrendsCtrlProfile/>");
    make();
    for (const QColor &base : { QColor(Qt::white), QColor(Qt::black) }) {
        QPalette palette = m_graph->palette();
        QColor clear = base; // as hosts do that paint behind their widgets
        clear.setAlpha(0);
        palette.setColor(QPalette::Base, clear);
        m_graph->setPalette(palette);
        QCOMPARE(image().pixelColor(1, 1), base);
        QCOMPARE(record()->texts.first().colour,
                 base == QColor(Qt::white) ? QColor(Qt::black) : QColor(Qt::white));
    }
}

void tst_GraphWidget::theUploadHistoryIsTrimmedTheDownloadIsNot()
{
    const int limit = QGuiApplication::primaryScreen()->geometry().height();
    make(QSize(60 + 3 * 4 * limit, 300)); // room for three times the limit
    const auto segments = [this](const QColor &colour, int legend) {
        return int(record()->linesOf(colour).size()) - legend;
    };
    addSamples(limit + 1);
    QCOMPARE(segments(m_uploadColour, 1), limit); // one more than the limit is held
    addSamples(1);
    QCOMPARE(segments(m_uploadColour, 1), limit - 1); // two went, one came
    addSamples(1);
    QCOMPARE(segments(m_uploadColour, 1), limit);
    addSamples(limit);
    QVERIFY(segments(m_uploadColour, 1) <= limit);
    QCOMPARE(segments(m_downloadColour, 2) / 2, 2 * limit + 2);
}

void tst_GraphWidget::hostileSamplesStayInThePlot_data()
{
    QTest::addColumn<double>("sample");
    QTest::newRow("negative") << -1.0;
    QTest::newRow("huge") << 1e308;
    QTest::newRow("hugely negative") << -1e308;
    QTest::newRow("tiny") << 5e-324;
    QTest::newRow("infinite") << kInfinity;
    QTest::newRow("minus infinite") << -kInfinity;
    QTest::newRow("not a number") << kNotANumber;
    QTest::newRow("just above an int") << 2147483648.0;
}

void tst_GraphWidget::hostileSamplesStayInThePlot()
{
    QFETCH(double, sample);
    make();
    for (int i = 0; i < 10; ++i) {
        m_graph->DrawGraph(sample, 0);
        m_graph->DrawGraph(0, sample);
        m_graph->DrawGraph(sample, sample);
    }
    const auto painted = record();
    for (const RecordedLine &line : std::as_const(painted->lines)) {
        QVERIFY(QRectF(0, 0, 600, 300).contains(line.line.p1()));
        QVERIFY(QRectF(0, 0, 600, 300).contains(line.line.p2()));
    }
    image();
}

void tst_GraphWidget::anySizePaints_data()
{
    QTest::addColumn<int>("direction");
    QTest::newRow("left to right") << int(Qt::LeftToRight);
    QTest::newRow("right to left") << int(Qt::RightToLeft);
}

void tst_GraphWidget::anySizePaints()
{
    QFETCH(int, direction);
    QApplication::setLayoutDirection(Qt::LayoutDirection(direction));
    make();
    addSamples(200);
    m_graph->DrawGraph(0, 125000);
    for (const int width : { 0, 1, 2, 19, 20, 21, 29, 49, 50, 51, 52, 63, 90, 120, 5000 }) {
        for (const int height : { 0, 1, 2, 9, 59, 60, 61, 69, 70, 71, 72, 83, 100, 3000 }) {
            m_graph->resize(width, height);
            const auto painted = record();
            if (width > 0 && height > 0)
                QCOMPARE(image().pixelColor(0, 0), m_background);
        }
    }
}

void tst_GraphWidget::paintingIsTraced()
{
    make();
    image();
    m_log->takeLines();
    image();
    const QStringList lines
        = m_log->takeLines().filter(QRegularExpression(QStringLiteral("GraphWidget")));
    QCOMPARE(lines,
             QStringList() << QStringLiteral("<time>: ") + sourcePath()
                     + QStringLiteral(": paintEvent:  Entered")
                           << QStringLiteral("<time>: ") + sourcePath()
                     + QStringLiteral(": paintEvent: Exit"));
}

void tst_GraphWidget::aSampleSchedulesOnePaint()
{
    make();
    m_graph->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_graph.data()));
    QApplication::processEvents();
    m_log->takeLines();
    const QString entered = QStringLiteral("paintEvent:  Entered");
    m_graph->DrawGraph(1, 2);
    m_graph->DrawGraph(3, 4);
    QVERIFY(m_log->takeLines().filter(entered).isEmpty()); // not at once
    QApplication::processEvents();
    QCOMPARE(int(m_log->takeLines().filter(entered).size()), 1);
}

void tst_GraphWidget::aPartAsksForOneWholePaint()
{
    make();
    addSamples(20);
    m_graph->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_graph.data()));
    QApplication::processEvents();
    m_log->takeLines();
    const QString entered = QStringLiteral("paintEvent:  Entered");
    m_graph->repaint(QRect(100, 100, 50, 50));
    QCOMPARE(int(m_log->takeLines().filter(entered).size()), 1);
    QStringList lines;
    QTRY_VERIFY(!(lines += m_log->takeLines().filter(entered)).isEmpty());
    QCOMPARE(int(lines.size()), 1);
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();
    QVERIFY(m_log->takeLines().filter(entered).isEmpty());
    // A part shows its part of the whole picture.
    const QImage whole = image();
    QImage part(m_graph->size(), QImage::Format_RGB32);
    m_graph->render(&part, QPoint(100, 100), QRegion(100, 100, 50, 50));
    QCOMPARE(part.copy(100, 100, 50, 50), whole.copy(100, 100, 50, 50));
    QApplication::processEvents();
}

void tst_GraphWidget::aGraphThatIsNeverWholeDoesNotPaintForEver()
{
    QWidget window; // shows a corner of the graph alone
    window.resize(200, 150);
    GraphWidget *const graph = new GraphWidget(&window);
    graph->resize(600, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    m_log->takeLines();
    graph->DrawGraph(1, 2);
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();
    const auto paints = m_log->takeLines().filter(QStringLiteral("paintEvent:  Entered")).size();
    QVERIFY(paints >= 1 && paints <= 2);
}

void tst_GraphWidget::itPaintsWithoutAStatisticsSource()
{
    make();
    NetInfoUILogic::Destroy();
    addSamples(5);
    QVERIFY(record()->textList().contains(QStringLiteral("IDS_TRENDS_SPEEDunitless")));
}

void tst_GraphWidget::paintingBeforeAnyPaintEventIsHarmless()
{
    make();
    addSamples(50);
    QImage target(600, 300, QImage::Format_RGB32);
    {
        QPainter painter(&target);
        m_graph->drawLeftToRight(painter);
        m_graph->drawRightToLeft(painter);
    }
    QCOMPARE(labels().size(), 11);
    QCOMPARE(image().pixelColor(20, 250), m_ink); // nothing of it is kept
}

void tst_GraphWidget::aPainterThatPaintsNothingIsHarmless()
{
    make();
    image();
    QPainter painter;
    m_graph->drawLeftToRight(painter);
    m_graph->drawRightToLeft(painter);
}

void tst_GraphWidget::aMagnifiedPaintTakesNoMemory()
{
    make();
    addSamples(50);
    image();
    QImage target(600, 300, QImage::Format_RGB32);
    for (const double scale : { 5.0, 1000.0, 1e9 }) {
        target.fill(Qt::magenta);
        QPainter painter(&target);
        painter.scale(scale, scale);
        m_graph->drawLeftToRight(painter);
        painter.end();
        if (scale < 1e6) // beyond, nothing can be painted
            QCOMPARE(target.pixelColor(3, 3), m_background);
    }
}

QTEST_MAIN(tst_GraphWidget)
#include "tst_graphwidget.moc"
