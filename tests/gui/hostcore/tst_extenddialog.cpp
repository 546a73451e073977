#include <host/ExtendDialog.h>

#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QtTest>

#include "HostGuiTest.h"

class tst_ExtendDialog : public HostGuiTest
{
    Q_OBJECT
private slots:
    void theFlagsAndTheParentArrive();
    void aDialogHasMarginsAPlainWindowNone();
    void theWidgetFillsTheFrame();
    void theWidgetBelongsToTheDialog();
    void nothingChangesNothing();
    void theDialogItselfIsNotItsWidget();
    void whatHoldsTheDialogIsNotItsWidget();
    void theSameWidgetTwiceIsThereOnce();
    void aSecondWidgetTakesThePlaceOfTheFirst();
    void aDeletedWidgetLeavesRoomForAnother();
};

void tst_ExtendDialog::theFlagsAndTheParentArrive()
{
    QWidget parent;
    const ExtendDialog dialog(&parent, Qt::Dialog | Qt::CustomizeWindowHint, WIDGET_TYPE_DIALOG);
    QCOMPARE(dialog.parentWidget(), &parent);
    QVERIFY(dialog.windowFlags() & Qt::CustomizeWindowHint);
    QVERIFY(dialog.isWindow());
}

void tst_ExtendDialog::aDialogHasMarginsAPlainWindowNone()
{
    const ExtendDialog plain(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DEFAULT);
    const ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DIALOG);
    QCOMPARE(plain.layout()->contentsMargins(), QMargins());
    QVERIFY(dialog.layout()->contentsMargins().left() > 0);
}

void tst_ExtendDialog::theWidgetFillsTheFrame()
{
    ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DEFAULT);
    auto *label = new QLabel("text");
    dialog.AddMainWidget(label);
    dialog.resize(300, 200);
    dialog.show();
    QTRY_COMPARE(label->geometry(), QRect(0, 0, 300, 200));
    QVERIFY(label->isVisible());
}

void tst_ExtendDialog::theWidgetBelongsToTheDialog()
{
    QPointer<QLabel> label(new QLabel);
    {
        ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DIALOG);
        dialog.AddMainWidget(label);
        QCOMPARE(label->parentWidget(), &dialog);
    }
    QVERIFY(!label);
}

void tst_ExtendDialog::nothingChangesNothing()
{
    ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DIALOG);
    auto *label = new QLabel;
    dialog.AddMainWidget(label);
    dialog.AddMainWidget(nullptr);
    QCOMPARE(dialog.layout()->count(), 1);
    QCOMPARE(dialog.layout()->itemAt(0)->widget(), label);
}

void tst_ExtendDialog::theDialogItselfIsNotItsWidget()
{
    ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DIALOG);
    dialog.AddMainWidget(&dialog);
    QCOMPARE(dialog.layout()->count(), 0);
    QVERIFY(!dialog.parentWidget());
}

// Not as a window but as a child, where the parent would end inside its own child.
void tst_ExtendDialog::whatHoldsTheDialogIsNotItsWidget()
{
    QWidget parent;
    auto *inner = new QWidget(&parent);
    ExtendDialog dialog(inner, Qt::Widget, WIDGET_TYPE_DIALOG);
    dialog.setWindowFlags(Qt::Widget);
    QVERIFY(parent.isAncestorOf(&dialog));
    dialog.AddMainWidget(&parent);
    dialog.AddMainWidget(inner);
    QCOMPARE(dialog.layout()->count(), 0);
    QCOMPARE(inner->parentWidget(), &parent);
}

void tst_ExtendDialog::theSameWidgetTwiceIsThereOnce()
{
    ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DIALOG);
    auto *label = new QLabel;
    dialog.AddMainWidget(label);
    dialog.AddMainWidget(label);
    QCOMPARE(dialog.layout()->count(), 1);
    QVERIFY(!label->isHidden());
}

void tst_ExtendDialog::aSecondWidgetTakesThePlaceOfTheFirst()
{
    ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DIALOG);
    auto *first = new QLabel;
    auto *second = new QLabel;
    dialog.AddMainWidget(first);
    dialog.AddMainWidget(second);
    QCOMPARE(dialog.layout()->count(), 1);
    QCOMPARE(dialog.layout()->itemAt(0)->widget(), second);
    QVERIFY(first->isHidden());
    QCOMPARE(first->parentWidget(), &dialog);
}

void tst_ExtendDialog::aDeletedWidgetLeavesRoomForAnother()
{
    ExtendDialog dialog(nullptr, Qt::WindowFlags(), WIDGET_TYPE_DIALOG);
    auto *first = new QLabel;
    dialog.AddMainWidget(first);
    delete first;
    auto *second = new QLabel;
    dialog.AddMainWidget(second);
    QCOMPARE(dialog.layout()->count(), 1);
    QCOMPARE(dialog.layout()->itemAt(0)->widget(), second);
}

QTEST_MAIN(tst_ExtendDialog)
#include "tst_extenddialog.moc"
