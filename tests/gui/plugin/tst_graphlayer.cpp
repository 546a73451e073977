#include "NetInfoGraphLayer.h"

#include <QPainter>
#include <QtTest>

Q_DECLARE_METATYPE(NetInfoGraphFace)

namespace {

NetInfoGraphFace someFace()
{
    NetInfoGraphFace face;
    face.area = QRect(0, 0, 600, 300);
    face.plot = NetInfoRules::graphPlot(face.area);
    face.caption = QStringLiteral("Speed");
    face.uploadText = QStringLiteral("Up");
    face.downloadText = QStringLiteral("Down");
    face.font.setPixelSize(10);
    face.background = Qt::black;
    face.ink = Qt::gray;
    face.upload = Qt::yellow;
    face.download = Qt::blue;
    return face;
}

} // namespace

class tst_GraphLayer : public QObject
{
    Q_OBJECT
private slots:
    void theSameFaceIsPaintedOnce();
    void anotherFaceIsPaintedAgain_data();
    void anotherFaceIsPaintedAgain();
    void anotherRatioIsPaintedAgain();
    void withoutARatioThereAreLabelsAndNoPixels();
    void withoutASizeThereAreNoPixels();
    void halfPixelsAtTheEdgesArePainted();
    void whatIsCopiedIsTheWholePicture_data();
    void whatIsCopiedIsTheWholePicture();
    void anOpaqueBackgroundNeedsNoAlpha();
    void aClearBackgroundStaysClear();
};

void tst_GraphLayer::theSameFaceIsPaintedOnce()
{
    NetInfoGraphLayer layer;
    layer.update(someFace(), 1);
    QCOMPARE(layer.pixmap().size(), QSize(600, 300));
    const qint64 painted = layer.pixmap().cacheKey();
    layer.update(someFace(), 1);
    QCOMPARE(layer.pixmap().cacheKey(), painted);
}

void tst_GraphLayer::anotherFaceIsPaintedAgain_data()
{
    QTest::addColumn<NetInfoGraphFace>("face");
    NetInfoGraphFace face = someFace();
    const auto row = [&face](const char *what) {
        QTest::newRow(what) << face;
        face = someFace();
    };
    face.area.setWidth(601);
    row("size");
    face.plot.top = 61;
    row("plot's top");
    face.plot.left = 21;
    row("plot's left");
    face.plot.height = 1;
    row("plot's height");
    face.plot.width = 1;
    row("plot's width");
    face.plot.secondLeft = 21;
    row("plot's second left");
    face.plot.columnStep = 1;
    row("column step");
    face.mirrored = true;
    row("direction");
    face.maximum = 120;
    row("scale");
    face.caption = QStringLiteral("Geschwindigkeit");
    row("caption");
    face.uploadText = QStringLiteral("Auf");
    row("upload's text");
    face.downloadText = QStringLiteral("Ab");
    row("download's text");
    face.font.setPixelSize(11);
    row("font");
    face.background = Qt::white;
    row("background");
    face.ink = Qt::red;
    row("ink");
    face.upload = Qt::red;
    row("upload's colour");
    face.download = Qt::red;
    row("download's colour");
}

void tst_GraphLayer::anotherFaceIsPaintedAgain()
{
    QFETCH(NetInfoGraphFace, face);
    NetInfoGraphLayer layer;
    layer.update(someFace(), 1);
    const qint64 painted = layer.pixmap().cacheKey();
    layer.update(face, 1);
    QVERIFY(layer.pixmap().cacheKey() != painted);
}

void tst_GraphLayer::anotherRatioIsPaintedAgain()
{
    NetInfoGraphLayer layer;
    layer.update(someFace(), 1);
    layer.update(someFace(), 2);
    QCOMPARE(layer.pixmap().size(), QSize(1200, 600));
    layer.update(someFace(), 1.25);
    QCOMPARE(layer.pixmap().size(), QSize(750, 375));
    QCOMPARE(layer.pixmap().devicePixelRatio(), 1.25);
}

void tst_GraphLayer::withoutARatioThereAreLabelsAndNoPixels()
{
    NetInfoGraphLayer layer;
    layer.update(someFace(), 0);
    QVERIFY(layer.pixmap().isNull());
    QVERIFY(layer.texts().labelWidth > 0);
    QCOMPARE(layer.texts().labelStride, 1);
    layer.update(someFace(), 1);
    QVERIFY(!layer.pixmap().isNull());
    layer.update(someFace(), 0);
    QVERIFY(layer.pixmap().isNull());
}

void tst_GraphLayer::withoutASizeThereAreNoPixels()
{
    NetInfoGraphLayer layer;
    layer.update(NetInfoGraphFace(), 1);
    QVERIFY(layer.pixmap().isNull());
    QCOMPARE(layer.texts().labelStride, 0);
}

void tst_GraphLayer::halfPixelsAtTheEdgesArePainted()
{
    NetInfoGraphFace face = someFace();
    face.area = QRect(0, 0, 601, 301);
    face.background = Qt::darkCyan;
    for (const double ratio : { 1.1, 1.25, 1.5, 1.75 }) {
        NetInfoGraphLayer layer;
        layer.update(face, ratio);
        const QImage painted = layer.pixmap().toImage();
        QCOMPARE(painted.size(), QSize(qCeil(601 * ratio), qCeil(301 * ratio)));
        QCOMPARE(painted.pixelColor(painted.width() - 1, 0), QColor(Qt::darkCyan));
        QCOMPARE(painted.pixelColor(0, painted.height() - 1), QColor(Qt::darkCyan));
    }
}

void tst_GraphLayer::whatIsCopiedIsTheWholePicture_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<double>("ratio");
    const QList<QSize> sizes
        = { { 1, 1 },     { 300, 200 }, { 517, 391 },  { 600, 300 },  { 1920, 1080 }, { 999, 601 },
            { 9000, 71 }, { 7001, 90 }, { 51, 10000 }, { 130, 5003 }, { 2500, 250 } };
    for (const QSize &size : sizes) {
        for (const int maximum : { 60, 9960, 2147483640 }) {
            for (const double ratio : { 1.0, 1.25, 2.0, 3.0 }) {
                QTest::addRow("%d x %d, %d, ratio %g", size.width(), size.height(), maximum, ratio)
                    << size << maximum << ratio;
            }
        }
    }
}

void tst_GraphLayer::whatIsCopiedIsTheWholePicture()
{
    QFETCH(QSize, size);
    QFETCH(int, maximum);
    QFETCH(double, ratio);
    NetInfoGraphFace face = someFace();
    face.area = QRect(QPoint(0, 0), size);
    face.plot = NetInfoRules::graphPlot(face.area);
    face.maximum = maximum;
    for (const bool mirrored : { false, true }) {
        face.mirrored = mirrored;
        NetInfoGraphLayer layer;
        layer.update(face, ratio);
        const QImage whole = layer.pixmap().toImage();
        QImage copied(whole.size(), QImage::Format_RGB32);
        copied.setDevicePixelRatio(ratio);
        copied.fill(Qt::magenta);
        QPainter painter(&copied);
        layer.paint(painter);
        painter.end();
        QCOMPARE(copied, whole.convertToFormat(QImage::Format_RGB32));
    }
}

void tst_GraphLayer::anOpaqueBackgroundNeedsNoAlpha()
{
    NetInfoGraphLayer layer;
    layer.update(someFace(), 1);
    QVERIFY(!layer.pixmap().hasAlpha()); // copied, not blended
}

void tst_GraphLayer::aClearBackgroundStaysClear()
{
    NetInfoGraphFace face = someFace();
    face.background = QColor(0, 0, 255, 0);
    NetInfoGraphLayer layer;
    layer.update(face, 1);
    QCOMPARE(layer.pixmap().toImage().pixelColor(1, 1).alpha(), 0);
}

QTEST_MAIN(tst_GraphLayer)
#include "tst_graphlayer.moc"
