#include <host/ExtendLineEdit.h>

#include <QSignalSpy>
#include <QtTest>

#include "HostGuiTest.h"

class tst_ExtendLineEdit : public HostGuiTest
{
    Q_OBJECT
private slots:
    void itIsALineEditOfItsParent();
    void typingArrives();
};

void tst_ExtendLineEdit::itIsALineEditOfItsParent()
{
    QWidget parent;
    const auto *edit = new ExtendLineEdit(&parent);
    QCOMPARE(edit->parentWidget(), &parent);
    QVERIFY(edit->text().isEmpty());
    QCOMPARE(QString(edit->metaObject()->className()), QString("ExtendLineEdit"));
    QCOMPARE(parent.findChild<QLineEdit *>(), edit);
}

void tst_ExtendLineEdit::typingArrives()
{
    ExtendLineEdit edit;
    edit.setMaxLength(3);
    QSignalSpy edited(&edit, &QLineEdit::textEdited);
    QTest::keyClicks(&edit, "1234");
    QCOMPARE(edit.text(), QString("123"));
    QCOMPARE(edited.count(), 3);
}

QTEST_MAIN(tst_ExtendLineEdit)
#include "tst_extendlineedit.moc"
