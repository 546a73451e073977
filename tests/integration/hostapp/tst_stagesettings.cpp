// The settings page where the plug-in itself shows it, on the stage.
#include <QAccessible>
#include <QPushButton>

#include "WindowSettingsTest.h"

class tst_StageSettings : public WindowSettingsTest
{
    Q_OBJECT
private slots:
    void thePageTakesTheStage();
    void nothingShinesThrough();
    void okRefusedStays();
    void keysAndButtonsEndIt_data();
    void keysAndButtonsEndIt();
    void keysDoNothingWithoutAPage();
    void modifiedEnterIsNotOk();
    void theViewComesBackAsItWas();
    void aViewSetMeanwhileComesAfterwards();
    void thePageGrowsWithTheStage();
    void theWindowGrowsToThePage();
    void thePageMayAskForMoreLater();
    void tabGoesFromThePageToTheButtons();
    void theFocusGoesToThePage();
    void theButtonsHaveNames();
    void theButtonsFollowTheLanguage();
    void aPageThatDiesGivesTheViewBack();
    void aPageThatGoesElsewhereGivesTheViewBack();
    void otherChildrenAreNoPage();
    void thePluginMayLeaveMeanwhile();
    void theWindowMayGoWhileSaving();
};

void tst_StageSettings::thePageTakesTheStage()
{
    QVERIFY(isStageFree());
    const int height = m_window->stage()->height();
    m_window->resize(m_window->size() + QSize(30, 20)); // the plug-in knows of the old size alone
    QTRY_COMPARE(m_window->stage()->height(), height + 20);
    QTest::mouseClick(child("Test_SetLimit"), Qt::LeftButton);
    QTRY_VERIFY(isStageInUse());
    const auto *page = child("Test_Settings");
    QCOMPARE(m_window->stage()->settingsPage(), page);
    QVERIFY(page->isVisible());
    QCOMPARE(page->geometry(), m_window->stage()->rect());
    QVERIFY(child("Host_SettingsOk")->mapTo(m_window.data(), QPoint()).y()
            > m_window->stage()->geometry().bottom());
    QVERIFY(!viewEntry(1)->isEnabled());
    QTRY_COMPARE(QApplication::focusWidget(), child("Test_First"));
    QTest::keyClick(child("Test_First"), Qt::Key_Comma, Qt::ControlModifier);
    QCoreApplication::processEvents();
    QVERIFY(!dialog());
}

void tst_StageSettings::nothingShinesThrough()
{
    for (const char *name : { "NetInfoUIPlugin_WidgetParent", "NetInfoSettingDlg_MainWidget" }) {
        child(name)->setAutoFillBackground(true);
        child(name)->setPalette(Qt::red);
    }
    const auto isRed = [this] {
        PluginStage *stage = m_window->stage();
        return stage->grab().toImage().pixelColor(stage->rect().center()) == QColor(Qt::red);
    };
    QVERIFY(isRed());
    showOnStage();
    QVERIFY(!isRed());
    QTest::keyClick(child("Test_First"), Qt::Key_Escape);
    QVERIFY(isRed());
}

void tst_StageSettings::okRefusedStays()
{
    m_plugin->setProperty("refuses", true);
    showOnStage();
    child<QLineEdit>("Test_First")->setText("wrong");
    QTest::mouseClick(child("Host_SettingsOk"), Qt::LeftButton);
    QTest::keyClick(child("Test_First"), Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(takeCalls(m_plugin), QStringList({ "OK", "OK" }));
    QVERIFY(isStageInUse());
    QCOMPARE(child<QLineEdit>("Test_First")->text(), QString("wrong"));
}

void tst_StageSettings::keysAndButtonsEndIt_data()
{
    QTest::addColumn<QByteArray>("widget");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifier");
    QTest::addColumn<QString>("call");
    const int none = int(Qt::NoModifier);
    const int alt = int(Qt::AltModifier);
    const QByteArray field = "Test_First";
    QTest::newRow("Enter in the page") << field << int(Qt::Key_Return) << none << "OK";
    QTest::newRow("key pad") << field << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << "OK";
    QTest::newRow("Escape in the page") << field << int(Qt::Key_Escape) << none << "Cancel";
    QTest::newRow("Alt+O") << field << int(Qt::Key_O) << alt << "OK";
    QTest::newRow("Alt+A") << field << int(Qt::Key_A) << alt << "Cancel";
    const QByteArray ok = "Host_SettingsOk";
    const QByteArray cancel = "Host_SettingsCancel";
    QTest::newRow("Enter on OK") << ok << int(Qt::Key_Return) << none << "OK";
    QTest::newRow("Escape on OK") << ok << int(Qt::Key_Escape) << none << "Cancel";
    QTest::newRow("Space on OK") << ok << int(Qt::Key_Space) << none << "OK";
    QTest::newRow("Enter on Cancel") << cancel << int(Qt::Key_Return) << none << "Cancel";
    const QByteArray window = "Host_MainWindow";
    QTest::newRow("Enter without a focus") << window << int(Qt::Key_Return) << none << "OK";
    QTest::newRow("Escape without a focus") << window << int(Qt::Key_Escape) << none << "Cancel";
}

void tst_StageSettings::keysAndButtonsEndIt()
{
    QFETCH(QByteArray, widget);
    QFETCH(int, key);
    QFETCH(int, modifier);
    m_plugin->setProperty("saved", "old");
    showOnStage();
    child<QLineEdit>("Test_First")->setText("new");
    QWidget *target = widget == "Host_MainWindow" ? m_window.data() : child(widget);
    target->setFocus();
    QTest::keyClick(target, Qt::Key(key), Qt::KeyboardModifiers(modifier));
    QTRY_VERIFY(isStageFree());
    QFETCH(QString, call);
    QCOMPARE(takeCalls(m_plugin).constFirst(), call);
    QCOMPARE(m_plugin->property("saved").toString(), QString(call == "OK" ? "new" : "old"));
    QVERIFY(child("NetInfoUIPlugin_WidgetParent")->isVisible());
    QVERIFY(!child("Test_Settings"));
}

void tst_StageSettings::keysDoNothingWithoutAPage()
{
    takeCalls(m_plugin);
    for (const Qt::Key key : { Qt::Key_Return, Qt::Key_Escape })
        QTest::keyClick(m_window.data(), key);
    QCOMPARE(takeCalls(m_plugin), QStringList());
    QVERIFY(m_window->isVisible());
}

void tst_StageSettings::modifiedEnterIsNotOk()
{
    showOnStage();
    QTest::keyClick(m_window.data(), Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClick(m_window.data(), Qt::Key_X);
    QCOMPARE(takeCalls(m_plugin), QStringList());
    QVERIFY(isStageInUse());
}

void tst_StageSettings::theViewComesBackAsItWas()
{
    showOnStage();
    QVERIFY(!child("NetInfoUIPlugin_WidgetParent")->isVisible());
    QVERIFY(!child("NetInfoSettingDlg_MainWidget")->isVisible());
    QTest::mouseClick(child("Host_SettingsCancel"), Qt::LeftButton);
    QVERIFY(child("NetInfoUIPlugin_WidgetParent")->isVisible()); // at once
    QVERIFY(!child("NetInfoSettingDlg_MainWidget")->isVisible());
    QCOMPARE(child("NetInfoUIPlugin_WidgetParent")->geometry(), m_window->stage()->rect());
    m_window->setView(HostView::Usage);
    QRect area = m_window->stage()->rect();
    controller()->ShowSettingDialog(m_window->stage(), area); // as a button there might
    QTRY_VERIFY(isStageInUse());
    QVERIFY(!child("NetInfoSettingDlg_MainWidget")->isVisible());
    QTest::mouseClick(child("Host_SettingsOk"), Qt::LeftButton);
    QVERIFY(child("NetInfoSettingDlg_MainWidget")->isVisible());
    QVERIFY(!child("NetInfoUIPlugin_WidgetParent")->isVisible());
}

void tst_StageSettings::aViewSetMeanwhileComesAfterwards()
{
    showOnStage();
    QTest::keyClick(child("Test_First"), Qt::Key_1, Qt::ControlModifier);
    QCoreApplication::processEvents();
    QVERIFY(m_window->view() == HostView::Statistics);
    m_window->setView(HostView::Usage);
    QCOMPARE(takeCalls(m_plugin), QStringList());
    QVERIFY(isStageInUse());
    QTest::mouseClick(child("Host_SettingsOk"), Qt::LeftButton);
    QVERIFY(child("NetInfoSettingDlg_MainWidget")->isVisible());
    QVERIFY(!child("NetInfoUIPlugin_WidgetParent")->isVisible());
}

void tst_StageSettings::thePageGrowsWithTheStage()
{
    showOnStage();
    const QSize before = m_window->stage()->size();
    m_window->resize(m_window->size() + QSize(80, 60));
    QTRY_COMPARE(m_window->stage()->size(), before + QSize(80, 60));
    QCOMPARE(child("Test_Settings")->geometry(), m_window->stage()->rect());
    QCOMPARE(takeCalls(m_plugin), QStringList());
    QTest::mouseClick(child("Host_SettingsCancel"), Qt::LeftButton);
    QTRY_COMPARE(child("NetInfoUIPlugin_WidgetParent")->geometry(), m_window->stage()->rect());
}

void tst_StageSettings::theWindowGrowsToThePage()
{
    m_plugin->setProperty("pageSize", QSize(500, 400));
    m_window->resize(300, 250);
    QTRY_VERIFY(m_window->stage()->height() < 300);
    showOnStage();
    QTRY_VERIFY(m_window->stage()->height() >= 400);
    QVERIFY(m_window->stage()->width() >= 500);
    QTRY_COMPARE(child("Test_Settings")->geometry(), m_window->stage()->rect());
    QTest::mouseClick(child("Host_SettingsCancel"), Qt::LeftButton);
    QTRY_VERIFY(m_window->minimumSizeHint().height() < 400); // it may be made smaller again
}

void tst_StageSettings::thePageMayAskForMoreLater()
{
    showOnStage();
    const QSize more = m_window->stage()->size() + QSize(50, 40);
    child("Test_Settings")->setMinimumSize(more);
    QTRY_COMPARE(m_window->stage()->size(), more);
}

void tst_StageSettings::tabGoesFromThePageToTheButtons()
{
    m_window->setMessages({ "a message, with a button" });
    showOnStage();
    child("Test_First")->setFocus();
    QStringList walked;
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        walked << QApplication::focusWidget()->objectName();
    }
    QCOMPARE(walked,
             QStringList({ "Test_Last", "Host_SettingsOk", "Host_SettingsCancel",
                           "Host_MessageDismiss", "Test_First" }));
}

void tst_StageSettings::theFocusGoesToThePage()
{
    m_window->setMessages({ "a message, with a button" });
    QRect area = m_window->stage()->rect();
    for (const char *expected : { "Test_First", "Test_Last" }) {
        child("Host_MessageDismiss")->setFocus();
        controller()->ShowSettingDialog(m_window->stage(), area);
        auto *field = child("Test_First");
        field->setEnabled(field->objectName() == expected);
        QTRY_COMPARE(QApplication::focusWidget(), child(expected));
        m_window->stage()->cancelSettings();
    }
}

void tst_StageSettings::theButtonsHaveNames()
{
    showOnStage();
    const auto nameOf = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    QCOMPARE(nameOf(child("Host_SettingsOk")), QString("OK"));
    QCOMPARE(nameOf(child("Host_SettingsCancel")), QString("Cancel"));
    QCOMPARE(child("Host_SettingsOk")->parentWidget()->accessibleName(), QString("Settings"));
}

void tst_StageSettings::theButtonsFollowTheLanguage()
{
    showOnStage();
    QVERIFY(m_languages->use("ar"));
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    m_window->retranslate("ar");
    m_window->stage()->languageChanged();
    QCOMPARE(child<QPushButton>("Host_SettingsOk")->text(), QString::fromUtf8("م&وافق"));
    QCOMPARE(child<QPushButton>("Host_SettingsCancel")->text(), QString::fromUtf8("إلغ&اء"));
    QCOMPARE(child("Test_Settings")->layoutDirection(), Qt::RightToLeft);
    QCOMPARE(takeCalls(m_plugin), QStringList("Notify 320"));
    QVERIFY(isStageInUse());
}

void tst_StageSettings::aPageThatDiesGivesTheViewBack()
{
    showOnStage();
    delete child("Test_Settings");
    QTRY_VERIFY(isStageFree());
    QVERIFY(child("NetInfoUIPlugin_WidgetParent")->isVisible());
    QVERIFY(controller()->IsActiveSetting()); // nobody has told it otherwise
    entry()->trigger();
    QVERIFY(child("Test_First")->isVisible());
    dialog()->reject();
    showOnStage();
}

void tst_StageSettings::aPageThatGoesElsewhereGivesTheViewBack()
{
    showOnStage();
    controller()->OnClickSettingCancelButton(); // the plug-in by itself
    QTRY_VERIFY(isStageFree());
    QVERIFY(child("NetInfoUIPlugin_WidgetParent")->isVisible());
}

void tst_StageSettings::otherChildrenAreNoPage()
{
    QScopedPointer<QWidget> plain(new QWidget(m_window->stage()));
    QCoreApplication::processEvents();
    QVERIFY(isStageFree()); // the plug-in says that it is not showing settings
    plain.reset();
    QWidget elsewhere;
    QRect area(0, 0, 50, 50);
    controller()->ShowSettingDialog(&elsewhere, area);
    const QDialog message(m_window->stage());
    m_window->setView(HostView::Usage);
    m_window->setView(HostView::Statistics); // the views come anew
    QCoreApplication::processEvents();
    QVERIFY(isStageFree()); // a window, the views, and a page in another place
    QVERIFY(child("NetInfoUIPlugin_WidgetParent")->isVisible());
    controller()->OnClickSettingCancelButton();
}

void tst_StageSettings::thePluginMayLeaveMeanwhile()
{
    showOnStage();
    m_window->stage()->leave();
    QVERIFY(!m_window->stage()->settingsPage());
    QVERIFY(!child("Host_SettingsOk")->isVisible());
    m_window->stage()->saveSettings();
    m_window->stage()->cancelSettings();
    QCOMPARE(takeCalls(m_plugin), QStringList());
}

void tst_StageSettings::theWindowMayGoWhileSaving()
{
    m_plugin->setProperty("runsEvents", true);
    showOnStage();
    QTimer::singleShot(0, m_plugin, [this] { m_window.reset(); });
    m_window->stage()->saveSettings();
    QVERIFY(!m_window);
}

QTEST_MAIN(tst_StageSettings)
#include "tst_stagesettings.moc"
