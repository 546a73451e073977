#include <host/CommonUtils.h>

#include <QDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QtTest>
#include <QVBoxLayout>

#include "HostGuiTest.h"

namespace {

QRect screenArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

// Where the middle of \a frame is, within the rounding of halves.
bool isCentred(const QRect &frame, const QRect &area)
{
    const QPoint off = frame.center() - area.center();
    return qAbs(off.x()) <= 1 && qAbs(off.y()) <= 1;
}

} // namespace

class tst_DialogPlace : public HostGuiTest
{
    Q_OBJECT
private slots:
    void nothingIsHarmless();
    void theDialogIsCentredOnTheScreen();
    void aDialogWithoutASizeGetsItsOwn();
    void itStaysWhereItIsWhenShown();
    void theDialogIsCentredOverItsParentsWindow();
    void withoutAParentTheScreenCounts();
    void besideAHiddenWindowTheScreenCounts();
    void itStaysOnTheScreen_data();
    void itStaysOnTheScreen();
    void aDialogLargerThanTheScreenShowsItsCorner();
};

void tst_DialogPlace::nothingIsHarmless()
{
    CommonUtils::MoveCentre(nullptr);
    CommonUtils::MoveRelatedCentre(nullptr);
}

void tst_DialogPlace::theDialogIsCentredOnTheScreen()
{
    QDialog dialog;
    dialog.resize(201, 101);
    CommonUtils::MoveCentre(&dialog);
    QVERIFY(isCentred(dialog.frameGeometry(), screenArea()));
    QCOMPARE(dialog.size(), QSize(201, 101));
}

void tst_DialogPlace::aDialogWithoutASizeGetsItsOwn()
{
    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel("text"));
    CommonUtils::MoveCentre(&dialog);
    QCOMPARE(dialog.size(), dialog.sizeHint());
    QVERIFY(isCentred(dialog.frameGeometry(), screenArea()));
}

void tst_DialogPlace::itStaysWhereItIsWhenShown()
{
    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel("text"));
    CommonUtils::MoveCentre(&dialog);
    const QPoint place = dialog.pos();
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.pos(), place);
}

void tst_DialogPlace::theDialogIsCentredOverItsParentsWindow()
{
    QWidget window;
    window.setGeometry(screenArea().left() + 300, screenArea().top() + 200, 220, 160);
    QWidget inner(&window);
    inner.setGeometry(0, 0, 10, 10);
    window.show();
    QDialog dialog(&inner);
    dialog.resize(100, 60);
    CommonUtils::MoveRelatedCentre(&dialog);
    QVERIFY(isCentred(dialog.frameGeometry(), window.frameGeometry()));
}

void tst_DialogPlace::withoutAParentTheScreenCounts()
{
    QDialog dialog;
    dialog.resize(100, 60);
    CommonUtils::MoveRelatedCentre(&dialog);
    QVERIFY(isCentred(dialog.frameGeometry(), screenArea()));
}

void tst_DialogPlace::besideAHiddenWindowTheScreenCounts()
{
    QWidget window;
    window.setGeometry(screenArea().left(), screenArea().top(), 220, 160);
    QDialog dialog(&window);
    dialog.resize(100, 60);
    CommonUtils::MoveRelatedCentre(&dialog);
    QVERIFY(isCentred(dialog.frameGeometry(), screenArea()));
}

void tst_DialogPlace::itStaysOnTheScreen_data()
{
    QTest::addColumn<QPoint>("parentsCorner");
    const QRect area = screenArea();
    QTest::newRow("left and top") << area.topLeft() - QPoint(150, 150);
    QTest::newRow("right and bottom") << area.bottomRight() - QPoint(50, 50);
}

void tst_DialogPlace::itStaysOnTheScreen()
{
    QFETCH(QPoint, parentsCorner);
    QWidget window;
    window.setGeometry(QRect(parentsCorner, QSize(200, 200)));
    window.show();
    QDialog dialog(&window);
    dialog.resize(180, 180);
    CommonUtils::MoveRelatedCentre(&dialog);
    QCOMPARE(dialog.frameGeometry() & screenArea(), dialog.frameGeometry());
}

void tst_DialogPlace::aDialogLargerThanTheScreenShowsItsCorner()
{
    QDialog dialog;
    dialog.resize(screenArea().size() + QSize(100, 100));
    CommonUtils::MoveCentre(&dialog);
    QCOMPARE(dialog.pos(), screenArea().topLeft());
}

QTEST_MAIN(tst_DialogPlace)
#include "tst_dialogplace.moc"
