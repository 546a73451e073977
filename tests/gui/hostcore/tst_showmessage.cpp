#include <host/CommonUtils.h>

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QtTest>

#include <functional>

#include "HostGuiTest.h"

namespace {

constexpr int kFirst = 1024;
constexpr int kSecond = 65536;
constexpr int kThird = 4194304;

// Runs an action on the message box as soon as it is open.
class WhenOpen : public QObject
{
public:
    explicit WhenOpen(std::function<void(QMessageBox *)> action)
        : m_action(std::move(action))
    {
        startTimer(0);
    }
    [[nodiscard]] bool hasRun() const
    {
        return m_hasRun;
    }

protected:
    void timerEvent(QTimerEvent *event) override
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        killTimer(event->timerId());
        m_hasRun = true;
        m_action(box);
    }

private:
    std::function<void(QMessageBox *)> m_action;
    bool m_hasRun = false;
};

void press(QMessageBox *box, const QString &text)
{
    for (QAbstractButton *button : box->buttons()) {
        if (button->text() == text)
            button->click();
    }
}

int ask(QWidget *parent, const QStringList &buttons, QDialog **dialog = nullptr)
{
    return CommonUtils::ShowMessage(QMessageBox::Question, parent, "title", "text",
                                    buttons.value(0), buttons.value(1), buttons.value(2),
                                    Qt::WindowFlags(), dialog);
}

} // namespace

class tst_ShowMessage : public HostGuiTest
{
    Q_OBJECT
private slots:
    void everyButtonHasItsCode_data();
    void everyButtonHasItsCode();
    void closingIsNeverYes_data();
    void closingIsNeverYes();
    void returnPressesTheFirstButton();
    void theTextsArrive();
    void textIsNotMarkup();
    void withoutAButtonThereIsOk();
    void theFlagsAreAdded();
    void theDialogIsKnownWhileItIsOpen();
    void theDialogIsForgottenWhenTheParentDies();
    void theCallersVariableMayDieWithTheBox();
    void aDyingParentIsNoAnswer();
};

void tst_ShowMessage::everyButtonHasItsCode_data()
{
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<int>("expected");
    QTest::newRow("only one") << QStringList { "Fine" } << "Fine" << kFirst;
    QTest::newRow("first of two") << QStringList { "Yes", "No" } << "Yes" << kFirst;
    QTest::newRow("second of two") << QStringList { "Yes", "No" } << "No" << kSecond;
    QTest::newRow("first of three") << QStringList { "A", "B", "C" } << "A" << kFirst;
    QTest::newRow("second of three") << QStringList { "A", "B", "C" } << "B" << kSecond;
    QTest::newRow("third of three") << QStringList { "A", "B", "C" } << "C" << kThird;
    QTest::newRow("first and third") << QStringList { "A", QString(), "C" } << "C" << kThird;
}

void tst_ShowMessage::everyButtonHasItsCode()
{
    QFETCH(QStringList, buttons);
    QFETCH(QString, pressed);
    const WhenOpen open([pressed](QMessageBox *box) { press(box, pressed); });
    QTEST(ask(nullptr, buttons), "expected");
}

void tst_ShowMessage::closingIsNeverYes_data()
{
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<int>("expected");
    for (const bool byKey : { true, false }) {
        const char *way = byKey ? "Escape" : "close";
        QTest::addRow("%s, one button", way) << QStringList { "A" } << byKey << kFirst;
        QTest::addRow("%s, two", way) << QStringList { "A", "B" } << byKey << kSecond;
        QTest::addRow("%s, three", way) << QStringList { "A", "B", "C" } << byKey << kThird;
        QTest::addRow("%s, first and third", way)
            << QStringList { "A", QString(), "C" } << byKey << kThird;
    }
}

void tst_ShowMessage::closingIsNeverYes()
{
    QFETCH(QStringList, buttons);
    QFETCH(bool, byKey);
    const WhenOpen open([byKey](QMessageBox *box) {
        if (byKey)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->close();
    });
    QTEST(ask(nullptr, buttons), "expected");
}

void tst_ShowMessage::returnPressesTheFirstButton()
{
    const WhenOpen open([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
    QCOMPARE(ask(nullptr, { "A", "B" }), kFirst);
}

void tst_ShowMessage::theTextsArrive()
{
    QWidget parent;
    QStringList texts;
    const WhenOpen open([&](QMessageBox *box) {
        texts << box->windowTitle() << box->text();
        QCOMPARE(box->icon(), QMessageBox::Question);
        QCOMPARE(box->parentWidget(), &parent);
        QVERIFY(box->isModal());
        press(box, "A");
    });
    QCOMPARE(ask(&parent, { "A", "B" }), kFirst);
    QCOMPARE(texts, QStringList({ "title", "text" }));
}

void tst_ShowMessage::textIsNotMarkup()
{
    Qt::TextFormat format = Qt::AutoText;
    const WhenOpen open([&](QMessageBox *box) {
        format = box->textFormat();
        box->close();
    });
    CommonUtils::ShowMessage(QMessageBox::Information, nullptr, "title", "<b>a</b>", "A");
    QCOMPARE(format, Qt::PlainText);
}

void tst_ShowMessage::withoutAButtonThereIsOk()
{
    int count = 0;
    QString text;
    const WhenOpen open([&](QMessageBox *box) {
        count = int(box->buttons().size());
        text = box->buttons().constFirst()->text();
        box->buttons().constFirst()->click();
    });
    QCOMPARE(ask(nullptr, {}), kFirst);
    QCOMPARE(count, 1);
    QCOMPARE(text.remove('&'), QString("OK"));
}

void tst_ShowMessage::theFlagsAreAdded()
{
    Qt::WindowFlags flags;
    const WhenOpen open([&](QMessageBox *box) {
        flags = box->windowFlags();
        box->close();
    });
    CommonUtils::ShowMessage(QMessageBox::Warning, nullptr, "title", "text", "A", QString(),
                             QString(), Qt::WindowStaysOnTopHint);
    QVERIFY(flags & Qt::WindowStaysOnTopHint);
    QCOMPARE(flags & Qt::WindowType_Mask, Qt::WindowFlags(Qt::Dialog));
}

void tst_ShowMessage::theDialogIsKnownWhileItIsOpen()
{
    QDialog *dialog = nullptr;
    QDialog *seen = nullptr;
    const WhenOpen open([&](QMessageBox *box) {
        QCOMPARE(dialog, static_cast<QDialog *>(box));
        seen = dialog;
        dialog->reject();
    });
    QVERIFY(ask(nullptr, { "A", "B" }, &dialog) != kFirst);
    QVERIFY(seen);
    QVERIFY(!dialog);
}

void tst_ShowMessage::theDialogIsForgottenWhenTheParentDies()
{
    auto *parent = new QWidget;
    QDialog *dialog = nullptr;
    const WhenOpen open([parent](QMessageBox *) { delete parent; });
    ask(parent, { "A", "B" }, &dialog);
    QVERIFY(!dialog);
    QVERIFY(open.hasRun());
}

// What a plug-in does that the host destroys while its message is open.
void tst_ShowMessage::theCallersVariableMayDieWithTheBox()
{
    auto *parent = new QWidget;
    auto *dialog = new QDialog *(nullptr);
    const WhenOpen open([&](QMessageBox *) {
        delete parent;
        delete dialog;
    });
    QCOMPARE(ask(parent, { "A", "B" }, dialog), 0);
}

void tst_ShowMessage::aDyingParentIsNoAnswer()
{
    for (const QStringList &buttons :
         { QStringList { "A" }, QStringList { "A", "B" }, QStringList { "A", "B", "C" } }) {
        auto *parent = new QWidget;
        const WhenOpen open([parent](QMessageBox *) { delete parent; });
        QCOMPARE(ask(parent, buttons), 0);
    }
}

QTEST_MAIN(tst_ShowMessage)
#include "tst_showmessage.moc"
