#include "NetInfoUIService.h"

#include <QImage>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QtTest>

class tst_GridDelegateLayout : public QObject
{
    Q_OBJECT
private slots:
    void aFocusedRowGetsAWhiteHairlinePenAndNoFrame();
    void aRowWithoutFocusLeavesThePen();
};

void tst_GridDelegateLayout::aFocusedRowGetsAWhiteHairlinePenAndNoFrame()
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    const QImage before = image;
    QPainter painter(&image);
    painter.setPen(QPen(Qt::red, 5));
    QStyleOptionViewItem option;
    option.state |= QStyle::State_HasFocus;
    GridDelegateLayout().drawFocus(&painter, option, QRect(2, 2, 30, 10));
    QCOMPARE(painter.pen().color(), QColor(Qt::white));
    QCOMPARE(painter.pen().width(), 0);
    painter.end();
    QCOMPARE(image, before);
}

void tst_GridDelegateLayout::aRowWithoutFocusLeavesThePen()
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    const QImage before = image;
    QPainter painter(&image);
    painter.setPen(QPen(Qt::red, 5));
    GridDelegateLayout().drawFocus(&painter, QStyleOptionViewItem(), QRect(2, 2, 30, 10));
    QCOMPARE(painter.pen().color(), QColor(Qt::red));
    painter.end();
    QCOMPARE(image, before);
}

QTEST_MAIN(tst_GridDelegateLayout)
#include "tst_griddelegatelayout.moc"
