// The settings dialog by keyboard, in words and for screen readers.
#include <QAccessible>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>

#include "SettingsDialogTest.h"

class tst_SettingsKeys : public SettingsDialogTest
{
    Q_OBJECT
private slots:
    void everythingElseThrowsAway_data();
    void everythingElseThrowsAway();
    void enterIsOk_data();
    void enterIsOk();
    void enterOnCancelIsCancel();
    void theButtonsHaveMnemonics_data();
    void theButtonsHaveMnemonics();
    void tabGoesFromTopToBottom_data();
    void tabGoesFromTopToBottom();
    void everythingHasANameForReaders();
    void textsFollowTheLanguage();
};

void tst_SettingsKeys::everythingElseThrowsAway_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : { "cancel button", "escape in the page", "escape in the list", "close" })
        QTest::newRow(way) << QString(way);
}

void tst_SettingsKeys::everythingElseThrowsAway()
{
    QFETCH(QString, way);
    m_plugins.at(0)->setProperty("saved", "old");
    open(2);
    first()->setText("new");
    takeCalls(m_plugins.at(0));
    if (way == "cancel button")
        press("Host_SettingsCancel");
    else if (way == "escape in the page")
        QTest::keyClick(first(), Qt::Key_Escape);
    else if (way == "escape in the list")
        QTest::keyClick(child("Host_SettingsPages"), Qt::Key_Escape);
    else
        m_dialog->close();
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("Cancel"));
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList());
    QCOMPARE(m_plugins.at(0)->property("saved").toString(), QString("old"));
    QVERIFY(!child("Test_Settings"));
}

void tst_SettingsKeys::enterIsOk_data()
{
    QTest::addColumn<QByteArray>("widget");
    QTest::addColumn<int>("key");
    QTest::newRow("line edit of the page") << QByteArray("Test_First") << int(Qt::Key_Return);
    QTest::newRow("another, key pad") << QByteArray("Test_Last") << int(Qt::Key_Enter);
    QTest::newRow("list") << QByteArray("Host_SettingsPages") << int(Qt::Key_Return);
    QTest::newRow("OK") << QByteArray("Host_SettingsOk") << int(Qt::Key_Return);
}

void tst_SettingsKeys::enterIsOk()
{
    QFETCH(QByteArray, widget);
    QFETCH(int, key);
    open(2);
    takeCalls(m_plugins.at(0));
    child(widget)->setFocus();
    QTest::keyClick(child(widget), Qt::Key(key));
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("OK"));
    QVERIFY(!m_dialog->isVisible());
}

void tst_SettingsKeys::enterOnCancelIsCancel()
{
    open();
    takeCalls(m_plugins.at(0));
    child("Host_SettingsCancel")->setFocus();
    QTest::keyClick(child("Host_SettingsCancel"), Qt::Key_Return);
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("Cancel"));
    QVERIFY(!m_dialog->isVisible());
}

void tst_SettingsKeys::theButtonsHaveMnemonics_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("call");
    QTest::newRow("OK") << int(Qt::Key_O) << "OK";
    QTest::newRow("Cancel") << int(Qt::Key_A) << "Cancel";
}

void tst_SettingsKeys::theButtonsHaveMnemonics()
{
    QFETCH(int, key);
    open();
    takeCalls(m_plugins.at(0));
    QTest::keyClick(first(), Qt::Key(key), Qt::AltModifier);
    QTRY_VERIFY(!m_dialog->isVisible());
    QTEST(takeCalls(m_plugins.at(0)).join(','), "call");
}

void tst_SettingsKeys::tabGoesFromTopToBottom_data()
{
    QTest::addColumn<int>("pages");
    QTest::addColumn<QStringList>("order");
    const QStringList page { "Test_First", "Test_Last", "Host_SettingsOk", "Host_SettingsCancel" };
    QTest::newRow("one page") << 1 << page;
    QTest::newRow("two pages") << 2 << (QStringList("Host_SettingsPages") + page);
}

void tst_SettingsKeys::tabGoesFromTopToBottom()
{
    QFETCH(int, pages);
    QFETCH(QStringList, order);
    open(pages);
    for (int round = 0; round < 3; ++round) {
        child<QListWidget>("Host_SettingsPages")->setCurrentRow((pages - 1) * (round % 2));
        QEvent restyle(QEvent::StyleChange); // lays the buttons out again
        if (round == 2)
            QCoreApplication::sendEvent(m_dialog->findChild<QDialogButtonBox *>(), &restyle);
        child("Host_SettingsCancel")->setFocus();
        QStringList walked;
        for (int i = 0; i < order.size(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            walked << QApplication::focusWidget()->objectName();
        }
        QCOMPARE(walked, order);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString("Host_SettingsOk"));
    }
}

void tst_SettingsKeys::everythingHasANameForReaders()
{
    open(2);
    int seen = 0;
    for (QWidget *widget : m_dialog->findChildren<QWidget *>()) {
        const bool isControl = widget->focusPolicy() != Qt::NoFocus && widget->isVisible();
        const bool isOurs = !child("Test_Settings")->isAncestorOf(widget);
        if (!isControl || !isOurs || qobject_cast<QScrollBar *>(widget))
            continue;
        const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
        QVERIFY2(!name.isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!name.contains("HOST_"), qPrintable(name));
        ++seen;
    }
    QCOMPARE(seen, 3);
    QCOMPARE(QAccessible::queryAccessibleInterface(m_dialog)->text(QAccessible::Name),
             QString("Settings"));
    QCOMPARE(area()->accessibleName(), QString("good"));
    QVERIFY(!m_dialog->findChild<QDialogButtonBox *>()->accessibleName().isEmpty());
}

void tst_SettingsKeys::textsFollowTheLanguage()
{
    open(2);
    QVERIFY(m_languages->use("de"));
    m_plugins.at(1)->setProperty("moduleName", "zweite");
    m_dialog->retranslate();
    QCOMPARE(m_dialog->windowTitle(), QString("Einstellungen"));
    QCOMPARE(child<QPushButton>("Host_SettingsOk")->text(), QString("&OK"));
    QCOMPARE(child<QPushButton>("Host_SettingsCancel")->text(), QString("A&bbrechen"));
    QCOMPARE(child("Host_SettingsPages")->accessibleName(), QString("Einstellungsseiten"));
    QCOMPARE(child<QListWidget>("Host_SettingsPages")->item(1)->text(), QString("zweite"));
    QCOMPARE(area(1)->accessibleName(), QString("zweite"));
}

QTEST_MAIN(tst_SettingsKeys)
#include "tst_settingskeys.moc"
