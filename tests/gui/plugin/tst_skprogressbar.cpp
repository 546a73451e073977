#include "SkProgressBar.h"

#include <QApplication>
#include <QImage>
#include <QPaintEvent>
#include <QPalette>
#include <QtTest>

#include <limits>

#include "PaintRecorder.h"
#include "TestLog.h"

namespace {

const QColor kFrame(124, 124, 124, 255);
const QColor kFill(1, 2, 3);

//! Keeps the rectangles that a widget is asked to paint.
class PaintEvents : public QObject
{
public:
    QList<QRect> rects;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            rects << static_cast<QPaintEvent *>(event)->rect();
        return false;
    }
};

} // namespace

class tst_SkProgressBar : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void aNewMeterIsEmptyAndBlack();
    void itIsABarOfQts();
    void allFourStepsComeInOrder();
    void theFillIsCrosswise_data();
    void theFillIsCrosswise();
    void withoutAMaximumTheRestIsPainted_data();
    void withoutAMaximumTheRestIsPainted();
    void aPartIsPaintedAsIfItWereTheBar();
    void thePixelsAreThere();
    void theFrameIsAPixelWideWithSharpCorners();
    void theTextIsBlackInEveryPalette();
    void settingTheMeterPaintsIt();
    void aPartAsksForOneWholePaint();
    void aBarThatIsNeverWholeDoesNotPaintForEver();

private:
    void make();
    //! What painting \a part of the bar paints.
    void record(PaintRecorder &recorder, const QRect &part);
    //! Shows the bar and waits until it has been painted.
    void show();

    QScopedPointer<TestLog> m_log;
    QScopedPointer<SkProgressBar> m_bar;
};

void tst_SkProgressBar::init()
{
    m_log.reset(new TestLog);
    make();
}

void tst_SkProgressBar::cleanup()
{
    m_bar.reset();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

void tst_SkProgressBar::make()
{
    m_bar.reset(new SkProgressBar);
    m_bar->resize(228, 20);
}

void tst_SkProgressBar::record(PaintRecorder &recorder, const QRect &part)
{
    m_bar->render(&recorder, part.topLeft(), QRegion(part), QWidget::RenderFlags());
}

void tst_SkProgressBar::show()
{
    m_bar->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_bar.data()));
    QApplication::processEvents();
}

void tst_SkProgressBar::aNewMeterIsEmptyAndBlack()
{
    QCOMPARE(m_bar->text(), QString());
    QCOMPARE(m_bar->colour(), QColor(0, 0, 0, 255));
    QVERIFY(m_bar->meterValue() == 0.0L);
    QVERIFY(m_bar->meterMaximum() == 0.0L);
}

void tst_SkProgressBar::itIsABarOfQts()
{
    QVERIFY(m_bar->inherits("SkProgressBar"));
    QVERIFY(m_bar->inherits("QProgressBar"));
    QWidget parent;
    const SkProgressBar *const bar = new SkProgressBar(&parent);
    QCOMPARE(bar->parentWidget(), &parent);
}

void tst_SkProgressBar::allFourStepsComeInOrder()
{
    m_bar->SetMeter(QStringLiteral("12 MB"), kFill, 50.0L, 100.0L);
    PaintRecorder recorder(m_bar->size());
    record(recorder, m_bar->rect());
    QCOMPARE(int(recorder.rects.size()), 3);
    const RecordedRect &background = recorder.rects.at(0);
    QCOMPARE(background.rect, QRectF(0, 0, 228, 20));
    QCOMPARE(background.fill, QColor(Qt::white));
    QVERIFY(!background.outline.isValid());
    const RecordedRect &fill = recorder.rects.at(1);
    QCOMPARE(fill.rect, QRectF(0, 0, 10, 228));
    QCOMPARE(fill.fill, kFill);
    QVERIFY(!fill.outline.isValid());
    QCOMPARE(recorder.textList(), QStringList({ "12 MB" }));
    const RecordedText &text = recorder.texts.at(0);
    QVERIFY(qAbs(text.ink().center().x() - 114) < 2);
    QVERIFY(qAbs(text.ink().center().y() - 10) < 3);
    const RecordedRect &frame = recorder.rects.at(2);
    QCOMPARE(frame.rect, QRectF(0, 0, 227, 19));
    QCOMPARE(frame.outline, kFrame);
    QVERIFY(!frame.fill.isValid());
    QVERIFY(background.order < fill.order);
    QVERIFY(fill.order < text.order);
    QVERIFY(text.order < frame.order);
}

void tst_SkProgressBar::theFillIsCrosswise_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<QRectF>("fill");
    const QSize bar(228, 20);
    QTest::newRow("a quarter") << bar << 25.0 << 100.0 << QRectF(0, 0, 5, 228);
    QTest::newRow("all") << bar << 100.0 << 100.0 << QRectF(0, 0, 20, 228);
    QTest::newRow("twice") << bar << 200.0 << 100.0 << QRectF(0, 0, 40, 228);
    QTest::newRow("a high bar") << QSize(30, 300) << 50.0 << 100.0 << QRectF(0, 0, 150, 30);
    QTest::newRow("bytes") << bar << 536870912.0 << 1073741824.0 << QRectF(0, 0, 10, 228);
    QTest::newRow("without end") << bar << std::numeric_limits<double>::infinity() << 1.0
                                 << QRectF(0, 0, 1 << 24, 228);
}

void tst_SkProgressBar::theFillIsCrosswise()
{
    QFETCH(QSize, size);
    QFETCH(double, value);
    QFETCH(double, maximum);
    m_bar->resize(size);
    m_bar->SetMeter(QString(), kFill, value, maximum);
    PaintRecorder recorder(size);
    record(recorder, m_bar->rect());
    QCOMPARE(int(recorder.rects.size()), 3);
    QTEST(recorder.rects.at(1).rect, "fill");
    QCOMPARE(recorder.rects.at(1).fill, kFill);
}

void tst_SkProgressBar::withoutAMaximumTheRestIsPainted_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("maximum");
    QTest::newRow("nothing of nothing") << 0.0 << 0.0;
    QTest::newRow("something of nothing") << 5.0 << 0.0;
    QTest::newRow("something of less than nothing") << 5.0 << -1.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 1.0;
}

void tst_SkProgressBar::withoutAMaximumTheRestIsPainted()
{
    QFETCH(double, value);
    QFETCH(double, maximum);
    m_bar->SetMeter(QStringLiteral("5 MB"), kFill, value, maximum);
    PaintRecorder recorder(m_bar->size());
    record(recorder, m_bar->rect());
    QCOMPARE(recorder.textList(), QStringList({ "5 MB" }));
    QCOMPARE(recorder.rects.first().rect, QRectF(m_bar->rect()));
    QCOMPARE(recorder.rects.first().fill, QColor(Qt::white));
    QCOMPARE(recorder.rects.last().outline, kFrame);
    for (const RecordedRect &rect : std::as_const(recorder.rects))
        QVERIFY(rect.fill != kFill || rect.rect.isEmpty());
}

void tst_SkProgressBar::aPartIsPaintedAsIfItWereTheBar()
{
    m_bar->SetMeter(QStringLiteral("5"), kFill, 50.0L, 100.0L);
    const QRect part(100, 4, 60, 8);
    PaintRecorder recorder(m_bar->size());
    record(recorder, part);
    QCOMPARE(int(recorder.rects.size()), 3);
    QCOMPARE(recorder.rects.at(0).rect, QRectF(part));
    QCOMPARE(recorder.rects.at(1).rect, QRectF(0, 0, 4, 60)); // from the bar's corner
    QCOMPARE(recorder.rects.at(2).rect, QRectF(100, 4, 59, 7));
    QVERIFY(qAbs(recorder.texts.at(0).ink().center().x() - 130) < 2);
}

void tst_SkProgressBar::thePixelsAreThere()
{
    m_bar->SetMeter(QString(), kFill, 50.0L, 100.0L);
    QImage image(m_bar->size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    m_bar->render(&image);
    QCOMPARE(image.pixelColor(1, 1), kFill);
    QCOMPARE(image.pixelColor(9, 18), kFill);
    QCOMPARE(image.pixelColor(10, 1), QColor(Qt::white));
    QCOMPARE(image.pixelColor(226, 18), QColor(Qt::white));
    for (const QPoint &edge : { QPoint(0, 0), QPoint(114, 0), QPoint(227, 0), QPoint(0, 10),
                                QPoint(227, 10), QPoint(0, 19), QPoint(114, 19), QPoint(227, 19) })
        QCOMPARE(image.pixelColor(edge), kFrame);
}

void tst_SkProgressBar::theFrameIsAPixelWideWithSharpCorners()
{
    QImage image(m_bar->size() * 8, QImage::Format_RGB32);
    image.setDevicePixelRatio(8);
    image.fill(Qt::magenta);
    m_bar->render(&image);
    // The line's middle is at 227, 19, and it goes half a pixel to each side.
    const QPoint corner(227 * 8 + 3, 19 * 8 + 3);
    QCOMPARE(image.pixelColor(corner), kFrame);
    QCOMPARE(image.pixelColor(corner + QPoint(2, -40)), QColor(Qt::white));
    QCOMPARE(image.pixelColor(corner + QPoint(-6, -40)), kFrame);
    QCOMPARE(image.pixelColor(corner + QPoint(-9, -40)), QColor(Qt::white));
}

void tst_SkProgressBar::theTextIsBlackInEveryPalette()
{
    QPalette dark;
    for (const QPalette::ColorRole role : { QPalette::Text, QPalette::WindowText })
        dark.setColor(role, Qt::white);
    m_bar->setPalette(dark);
    m_bar->SetMeter(QStringLiteral("5 MB"), kFill, 50.0L, 100.0L);
    PaintRecorder recorder(m_bar->size());
    record(recorder, m_bar->rect());
    QCOMPARE(recorder.texts.at(0).colour, QColor(Qt::black));
}

void tst_SkProgressBar::settingTheMeterPaintsIt()
{
    show();
    PaintEvents events;
    m_bar->installEventFilter(&events);
    m_bar->SetMeter(QStringLiteral("1:30 Hours"), kFill, 5400.0L, 7200.0L);
    QTRY_COMPARE(events.rects, QList<QRect>({ m_bar->rect() }));
    QCOMPARE(m_bar->text(), QStringLiteral("1:30 Hours"));
    QCOMPARE(m_bar->colour(), kFill);
    QVERIFY(m_bar->meterValue() == 5400.0L);
    QVERIFY(m_bar->meterMaximum() == 7200.0L);
}

void tst_SkProgressBar::aPartAsksForOneWholePaint()
{
    show();
    PaintEvents events;
    m_bar->installEventFilter(&events);
    for (int round = 0; round < 3; ++round) {
        events.rects.clear();
        const QRect part(10, 2, 50, 8);
        m_bar->repaint(part);
        QCOMPARE(events.rects, QList<QRect>({ part }));
        QTRY_COMPARE(events.rects, QList<QRect>({ part, m_bar->rect() }));
        for (int i = 0; i < 20; ++i)
            QApplication::processEvents();
        QCOMPARE(int(events.rects.size()), 2);
    }
}

void tst_SkProgressBar::aBarThatIsNeverWholeDoesNotPaintForEver()
{
    QWidget window; // shows a corner of the bar alone
    window.resize(200, 150);
    SkProgressBar *const bar = new SkProgressBar(&window);
    bar->setGeometry(100, 140, 228, 20);
    PaintEvents events;
    bar->installEventFilter(&events);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // As many turns as the other bar needs for ten paints of its own.
    PaintEvents others;
    SkProgressBar *const other = new SkProgressBar(&window);
    other->setGeometry(0, 0, 50, 20);
    other->installEventFilter(&others);
    other->show();
    for (int i = 1; i <= 10; ++i) {
        other->update();
        QTRY_VERIFY(int(others.rects.size()) >= i);
    }
    QVERIFY(!events.rects.isEmpty());
    QVERIFY2(events.rects.size() < 5, qPrintable(QString::number(events.rects.size())));
    QCOMPARE(events.rects.last(), QRect(0, 0, 100, 10));
}

QTEST_MAIN(tst_SkProgressBar)
#include "tst_skprogressbar.moc"
