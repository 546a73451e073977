// The settings as the window's menu offers them.

#include "WindowSettingsTest.h"

class tst_SettingsEntry : public WindowSettingsTest
{
    Q_OBJECT
private slots:
    void theEntryNeedsAName();
    void theEntryFollowsTheLanguage();
    void theShortcutOpensTheDialog();
    void oneDialogAtATime();
    void theDialogEndsWithTheWindow();
    void theDialogTakesThePageBack();
    void twiceInARow();
};

void tst_SettingsEntry::theEntryNeedsAName()
{
    QMenu *menu = m_window->menuBar()->actions().at(0)->menu();
    QVERIFY(menu->actions().contains(entry()));
    QVERIFY(entry()->isVisible());
    m_plugin->setProperty("moduleName", QString());
    emit menu->aboutToShow();
    QVERIFY(!entry()->isVisible());
    QTest::keyClick(m_window.data(), Qt::Key_Comma, Qt::ControlModifier);
    QCoreApplication::processEvents();
    QVERIFY(!dialog());
    m_plugin->setProperty("moduleName", "Data usage");
    m_window->retranslate("en");
    QVERIFY(entry()->isVisible());
    m_plugin->setProperty("moduleName", QString());
    entry()->trigger(); // nobody has looked since
    QVERIFY(!dialog());
    QVERIFY(!entry()->isVisible());
    m_plugin->setProperty("moduleName", "Data usage");
    m_window->setSettingModules({});
    QVERIFY(!entry()->isVisible());
}

void tst_SettingsEntry::theEntryFollowsTheLanguage()
{
    QCOMPARE(entry()->text(), QString::fromUtf8("&Settings…"));
    QVERIFY(m_languages->use("de"));
    m_window->retranslate("de");
    QCOMPARE(entry()->text(), QString::fromUtf8("&Einstellungen …"));
}

void tst_SettingsEntry::theShortcutOpensTheDialog()
{
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(m_window.data(), Qt::Key_Comma, Qt::ControlModifier);
        QTRY_VERIFY(dialog() && dialog()->isVisible());
        QCOMPARE(dialog()->windowModality(), Qt::WindowModal);
        QCOMPARE(dialog()->parentWidget(), m_window.data());
        QVERIFY(QTest::qWaitForWindowExposed(dialog()));
        QVERIFY(child("Test_First")->isVisible());
        QTest::keyClick(child("Test_First"), i == 1 ? Qt::Key_Return : Qt::Key_Escape);
        QTRY_VERIFY(!dialog()); // it does not stay behind
        m_window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), m_window.data());
    }
    QCOMPARE(takeCalls(m_plugin).filter(QRegularExpression("^(OK|Cancel)$")),
             QStringList({ "Cancel", "OK", "Cancel" }));
}

void tst_SettingsEntry::oneDialogAtATime()
{
    entry()->trigger();
    QVERIFY(!entry()->isEnabled());
    entry()->setEnabled(true);
    entry()->trigger();
    QCOMPARE(m_window->findChildren<SettingsDialog *>().size(), 1);
    QVERIFY(!entry()->isEnabled());
    QVERIFY(m_languages->use("de"));
    m_window->retranslate("de");
    QCOMPARE(dialog()->windowTitle(), QString("Einstellungen"));
    QVERIFY(!entry()->isEnabled());
    dialog()->reject();
    QVERIFY(entry()->isEnabled());
    entry()->trigger(); // the one before may not be gone yet
    QVERIFY(!entry()->isEnabled());
    QTRY_COMPARE(m_window->findChildren<SettingsDialog *>().size(), 1);
    QVERIFY(dialog()->isVisible());
}

void tst_SettingsEntry::theDialogEndsWithTheWindow()
{
    entry()->trigger();
    m_window->stage()->leave();
    m_window.reset();
    QVERIFY(!takeCalls(m_plugin).contains("OK"));
}

void tst_SettingsEntry::theDialogTakesThePageBack()
{
    entry()->trigger();
    QTest::mouseClick(child("Test_SetLimit"), Qt::LeftButton); // past the dialog's modality
    QCOMPARE(child("Test_Settings")->parentWidget(), m_window->stage());
    QTRY_VERIFY(dialog()->isAncestorOf(child("Test_Settings")));
    QTRY_VERIFY(child("NetInfoUIPlugin_WidgetParent")->isVisible());
    QVERIFY(!child("Host_SettingsOk")->isVisible() || dialog()->isVisible());
    QVERIFY(child("Host_Views")->isEnabled());
    dialog()->reject();
    QVERIFY(isStageFree());
}

void tst_SettingsEntry::twiceInARow()
{
    for (int i = 0; i < 10; ++i) {
        showOnStage();
        child<QLineEdit>("Test_First")->setText(QString::number(i));
        QTest::keyClick(child("Test_First"), Qt::Key_Return);
        QVERIFY(isStageFree());
        QCOMPARE(m_plugin->property("saved").toInt(), i);
        entry()->trigger();
        QCOMPARE(child<QLineEdit>("Test_First")->text(), QString::number(i));
        dialog()->accept();
    }
}

QTEST_MAIN(tst_SettingsEntry)
#include "tst_settingsentry.moc"
