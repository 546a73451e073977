#include <host/IBasePlugin.h>
#include <host/ISettingUIPlugin.h>

#include <QListWidget>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>

#include "SettingsDialogTest.h"

class tst_SettingsDialog : public SettingsDialogTest
{
    Q_OBJECT
private slots:
    void onePageNeedsNoList();
    void severalPagesAreListed();
    void aPageIsFetchedWhenItIsChosen();
    void thePageGrowsWithTheDialog();
    void thePageGetsWhatItAsksFor();
    void aLargerPageThatIsChosenGetsItToo();
    void aPageLargerThanTheScreenScrolls();
    void okClosesWhatIsSaved();
    void okStaysWhenThePageRefuses();
    void theRefusingPageComesToTheFront();
    void aSavedPageCanBeChosenAgain();
    void pagesNeverSeenAreLeftAlone();
    void reopeningWorksAnyNumberOfTimes();
    void aPageThatDiedWithItsParentComesAgain();
    void aPageTakenElsewhereIsFetchedBack();
    void aMessageOfThePluginIsNoPage();
    void aControllerThatEndsIsSurvived();
    void nothingIsThrownAwayWhileSaving();
    void beingDeletedWhileSavingIsSurvived();
    void aModuleWithoutSettingsHasNoName();
};

void tst_SettingsDialog::onePageNeedsNoList()
{
    open();
    QCOMPARE(m_dialog->windowTitle(), QString("Settings"));
    QCOMPARE(m_dialog->windowModality(), Qt::WindowModal);
    QVERIFY(child("Host_SettingsPages")->isHidden());
    QVERIFY(child("Test_Settings")->isVisible());
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("ShowSettingDialog"));
    QTRY_COMPARE(QApplication::focusWidget(), first());
}

void tst_SettingsDialog::severalPagesAreListed()
{
    open(2);
    const auto *list = child<QListWidget>("Host_SettingsPages");
    QVERIFY(list->isVisible());
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->item(0)->text(), QString("good"));
    QCOMPARE(list->item(1)->text(), QString("second"));
    QVERIFY(list->mapTo(m_dialog, QPoint()).x() < first()->mapTo(m_dialog, QPoint()).x());
    QVERIFY(list->width() < m_dialog->width() / 3);
    QTRY_VERIFY(list->hasFocus());
}

void tst_SettingsDialog::aPageIsFetchedWhenItIsChosen()
{
    open(2);
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList());
    const QWidget *firstPage = child("Test_Settings");
    QTest::keyClick(child("Host_SettingsPages"), Qt::Key_Down);
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList("ShowSettingDialog"));
    QVERIFY(!firstPage->isVisible());
    QCOMPARE(m_dialog->findChildren<QWidget *>("Test_Settings").size(), 2);
    QVERIFY(child("Host_SettingsPages")->hasFocus());
    QTest::keyClick(child("Host_SettingsPages"), Qt::Key_Up);
    QVERIFY(firstPage->isVisible());
    QTest::keyClick(child("Host_SettingsPages"), Qt::Key_Down);
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList()); // what was entered there is still there
}

void tst_SettingsDialog::thePageGrowsWithTheDialog()
{
    open(2);
    const QSize before = child("Test_Settings")->size();
    m_dialog->resize(m_dialog->size() + QSize(70, 50));
    QTRY_COMPARE(child("Test_Settings")->size(), before + QSize(70, 50));
    QCOMPARE(child("Test_Settings")->size(), area()->viewport()->size());
}

void tst_SettingsDialog::thePageGetsWhatItAsksFor()
{
    open();
    QVERIFY(child("Test_Settings")->width() >= 420);
    QVERIFY(child("Test_Settings")->height() >= 360);
    m_dialog->reject();
    delete m_dialog;
    qobject_cast<IBasePlugin *>(m_plugins.at(0))->OnDestroy();
    m_plugins.at(0)->setProperty("pageSize", QSize(555, 444));
    open();
    QCOMPARE(child("Test_Settings")->size(), QSize(555, 444));
    QVERIFY(!area()->verticalScrollBar()->isVisible());
    QVERIFY(!area()->horizontalScrollBar()->isVisible());
}

void tst_SettingsDialog::aLargerPageThatIsChosenGetsItToo()
{
    m_plugins.at(1)->setProperty("pageSize", QSize(555, 444));
    open(2);
    QTest::keyClick(child("Host_SettingsPages"), Qt::Key_Down);
    QCOMPARE(area(1)->findChild<QWidget *>("Test_Settings")->size(), QSize(555, 444));
    QTRY_COMPARE(area(1)->viewport()->size(), QSize(555, 444));
}

void tst_SettingsDialog::aPageLargerThanTheScreenScrolls()
{
    m_plugins.at(0)->setProperty("pageSize", QSize(3000, 2000));
    open();
    const QSize screen = m_dialog->screen()->availableSize();
    QVERIFY(m_dialog->width() <= screen.width());
    QVERIFY(m_dialog->height() <= screen.height());
    QCOMPARE(child("Test_Settings")->size(), QSize(3000, 2000));
    QVERIFY(child("Host_SettingsOk")->isVisible());
    const auto *last = child<QLineEdit>("Test_Last");
    QVERIFY(!area()->viewport()->rect().contains(last->mapTo(area()->viewport(), QPoint(9, 9))));
    QTest::keyClick(first(), Qt::Key_Tab);
    QVERIFY(last->hasFocus());
    QVERIFY(area()->viewport()->rect().contains(last->mapTo(area()->viewport(), QPoint(9, 9))));
}

void tst_SettingsDialog::okClosesWhatIsSaved()
{
    open();
    QSignalSpy finished(m_dialog, &QDialog::finished);
    first()->setText("new");
    takeCalls(m_plugins.at(0));
    press("Host_SettingsOk");
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("OK"));
    QCOMPARE(m_plugins.at(0)->property("saved").toString(), QString("new"));
    QVERIFY(!child("Test_Settings"));
}

void tst_SettingsDialog::okStaysWhenThePageRefuses()
{
    m_plugins.at(0)->setProperty("refuses", true);
    open();
    first()->setText("wrong");
    takeCalls(m_plugins.at(0));
    press("Host_SettingsOk");
    press("Host_SettingsOk");
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList({ "OK", "OK" }));
    QCOMPARE(first()->text(), QString("wrong"));
    m_plugins.at(0)->setProperty("refuses", false);
    press("Host_SettingsOk");
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_plugins.at(0)->property("saved").toString(), QString("wrong"));
}

void tst_SettingsDialog::theRefusingPageComesToTheFront()
{
    m_plugins.at(1)->setProperty("refuses", true);
    open(2);
    auto *list = child<QListWidget>("Host_SettingsPages");
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Up);
    first()->setText("kept");
    takeCalls(m_plugins.at(0));
    takeCalls(m_plugins.at(1));
    press("Host_SettingsOk");
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(list->currentRow(), 1);
    QVERIFY(child("Test_Settings")->isVisible());
    press("Host_SettingsOk");
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("OK"));
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList({ "OK", "OK" }));
    press("Host_SettingsCancel"); // what was saved before stays saved
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList());
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList("Cancel"));
    QCOMPARE(m_plugins.at(0)->property("saved").toString(), QString("kept"));
}

void tst_SettingsDialog::aSavedPageCanBeChosenAgain()
{
    m_plugins.at(1)->setProperty("refuses", true);
    open(2);
    auto *list = child<QListWidget>("Host_SettingsPages");
    list->setCurrentRow(1);
    press("Host_SettingsOk");
    takeCalls(m_plugins.at(0));
    list->setCurrentRow(0);
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("ShowSettingDialog"));
    QVERIFY(first()->isVisible());
    m_plugins.at(1)->setProperty("refuses", false);
    press("Host_SettingsOk");
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("OK"));
    QVERIFY(!m_dialog->isVisible());
}

void tst_SettingsDialog::pagesNeverSeenAreLeftAlone()
{
    open(2);
    press("Host_SettingsOk");
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList());
}

void tst_SettingsDialog::reopeningWorksAnyNumberOfTimes()
{
    const struct
    {
        const char *code;
        Qt::LayoutDirection direction;
        const char *title;
    } languages[]
        = { { "ar", Qt::RightToLeft, "الإعدادات" }, { "fr", Qt::LeftToRight, "Paramètres" } };
    for (int i = 0; i < 20; ++i) {
        const auto &language = languages[i % 2];
        QVERIFY(m_languages->use(language.code));
        QGuiApplication::setLayoutDirection(language.direction);
        open();
        QCOMPARE(m_dialog->windowTitle(), QString::fromUtf8(language.title));
        QCOMPARE(m_dialog->layoutDirection(), language.direction);
        QCOMPARE(child("Test_Settings")->layoutDirection(), language.direction);
        QVERIFY(first()->isVisible());
        QCOMPARE(first()->text(), i == 0 ? QString() : QString::number(i - 1 - (i - 1) % 3));
        first()->setText(QString::number(i));
        press(i % 3 == 0 ? "Host_SettingsOk" : "Host_SettingsCancel");
        QVERIFY(!m_dialog->isVisible());
    }
}

void tst_SettingsDialog::aPageThatDiedWithItsParentComesAgain()
{
    open();
    const QPointer<QWidget> page = child("Test_Settings");
    first()->setText("new");
    delete m_dialog;
    QVERIFY(!page);
    open();
    QVERIFY(first()->isVisible());
    delete child("Test_Settings"); // and one that dies in the open dialog
    takeCalls(m_plugins.at(0));
    press("Host_SettingsOk");
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList());
    open();
    QVERIFY(first()->isVisible());
    m_dialog->reject();
}

void tst_SettingsDialog::aPageTakenElsewhereIsFetchedBack()
{
    open();
    QWidget *page = child("Test_Settings");
    QRect area(0, 0, 50, 50);
    qobject_cast<ISettingUIPlugin *>(m_plugins.at(0))->ShowSettingDialog(m_window.data(), area);
    QVERIFY(!child("Test_Settings"));
    m_dialog->showPage();
    QCOMPARE(child("Test_Settings"), page);
    QVERIFY(page->isVisible());
    QTRY_VERIFY(page->width() >= 420);
    press("Host_SettingsCancel");
}

void tst_SettingsDialog::aMessageOfThePluginIsNoPage()
{
    open();
    QWidget *holder = child("Test_Settings")->parentWidget();
    delete child("Test_Settings");
    const QDialog message(holder);
    takeCalls(m_plugins.at(0));
    press("Host_SettingsOk");
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList());
    QVERIFY(!m_dialog->isVisible());
}

void tst_SettingsDialog::aControllerThatEndsIsSurvived()
{
    open();
    QWidget *page = child("Test_Settings");
    delete m_plugins.at(0);
    QVERIFY(page->isVisible());
    m_dialog->retranslate();
    press("Host_SettingsOk");
    QVERIFY(!m_dialog->isVisible());
}

void tst_SettingsDialog::nothingIsThrownAwayWhileSaving()
{
    m_plugins.at(0)->setProperty("runsEvents", true);
    open();
    takeCalls(m_plugins.at(0));
    QTimer::singleShot(0, m_dialog, [this] {
        m_dialog->reject();
        m_dialog->accept();
    });
    press("Host_SettingsOk");
    QCOMPARE(takeCalls(m_plugins.at(0)), QStringList("OK"));
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    open(); // once the saving is over, everything works again
    m_plugins.at(0)->setProperty("refuses", true);
    press("Host_SettingsOk");
    press("Host_SettingsCancel");
    QVERIFY(!m_dialog->isVisible());
}

void tst_SettingsDialog::beingDeletedWhileSavingIsSurvived()
{
    m_plugins.at(0)->setProperty("runsEvents", true);
    open(2);
    QTimer::singleShot(0, m_dialog, [this] { delete m_dialog; });
    m_dialog->accept();
    QVERIFY(!m_dialog);
    QCOMPARE(takeCalls(m_plugins.at(1)), QStringList());
}

void tst_SettingsDialog::aModuleWithoutSettingsHasNoName()
{
    QObject plain;
    m_plugins.at(1)->setProperty("moduleName", QString());
    const SettingModules modules { SettingModule(), SettingModule(&plain),
                                   SettingModule(m_plugins.at(1)), SettingModule(m_plugins.at(0)) };
    for (int i = 0; i < 3; ++i) {
        QVERIFY(modules.at(i).name().isEmpty());
        QVERIFY(!modules.at(i).isActive());
    }
    modules.at(0).show(m_window.data());
    modules.at(1).cancel();
    QVERIFY(modules.at(1).save());
    QCOMPARE(namedModules(modules).size(), 1);
    QCOMPARE(namedModules(modules).constFirst().name(), QString("good"));
}

QTEST_MAIN(tst_SettingsDialog)
#include "tst_settingsdialog.moc"
