#include "NetInfoUIService.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>

#include "PluginTest.h"

namespace {

QStringList texts(const QMenu &menu)
{
    QStringList list;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions)
        list << action->text();
    return list;
}

} // namespace

class tst_TreeMenu : public PluginTest
{
    Q_OBJECT
private slots:
    void theActionsHaveTheirNames();
    void theMenuHoldsThreeActions();
    void withoutStatisticsThereIsNoReset();
    void theActionsFollowTheLanguage();
    void expandAndCollapseReachEveryNode();
    void resetAsksFirst();
    void theMenuOpensOnRequest();
    void theHostMayDestroyWhileTheMenuIsOpen();
    void withoutATreeNoMenuOpens();
    void aResetPickedInTheMenuAsksWhenItHasClosed();
    void theHostMayDestroyAtAResetPickedInTheMenu();
    void aRealRightClickOpensTheMenu();

private:
    //! Opens the menu and picks its first action with the keyboard.
    void pickReset();
};

void tst_TreeMenu::theActionsHaveTheirNames()
{
    CNetInfoUIService *const service = start();
    for (const char *name : { "NetInfoUIPlugin_ActionResetAll", "NetInfoUIPlugin_ActionExpandAll",
                              "NetInfoUIPlugin_ActionCollapseAll" })
        QVERIFY(service->findChild<QAction *>(QLatin1String(name)));
}

void tst_TreeMenu::theMenuHoldsThreeActions()
{
    QMenu menu;
    start()->fillTreeContextMenu(&menu);
    QCOMPARE(texts(menu),
             QStringList({ "IDS_CLEAR_VOLUME", "IDS_EXPAND_ALL", "IDS_COLLAPSE_ALL" }));
}

void tst_TreeMenu::withoutStatisticsThereIsNoReset()
{
    QMenu menu;
    start({ "STATISTICS" })->fillTreeContextMenu(&menu);
    QCOMPARE(texts(menu), QStringList({ "IDS_EXPAND_ALL", "IDS_COLLAPSE_ALL" }));
    QVERIFY(!row(QStringLiteral("IDS_TREE_STATISTICS")));
}

void tst_TreeMenu::theActionsFollowTheLanguage()
{
    CNetInfoUIService *const service = start();
    fakeHost().language = QStringLiteral(".de");
    service->Notify(320, 0, 0);
    QMenu menu;
    service->fillTreeContextMenu(&menu);
    QCOMPARE(texts(menu),
             QStringList({ "IDS_CLEAR_VOLUME.de", "IDS_EXPAND_ALL.de", "IDS_COLLAPSE_ALL.de" }));
}

void tst_TreeMenu::expandAndCollapseReachEveryNode()
{
    CNetInfoUIService *const service = start();
    QMenu menu;
    service->fillTreeContextMenu(&menu);
    QTreeWidgetItem *const daily = row(QStringLiteral("IDS_TREE_DAILY"));
    menu.actions().at(2)->trigger();
    QCOMPARE(m_log->takeLines(), QStringList({ "<time>: " + kSource + ": collapseAll called" }));
    QVERIFY(!daily->isExpanded());
    menu.actions().at(1)->trigger();
    QCOMPARE(m_log->takeLines(), QStringList({ "<time>: " + kSource + ": expandAll called" }));
    QVERIFY(daily->isExpanded());
}

void tst_TreeMenu::resetAsksFirst()
{
    CNetInfoUIService *const service = start();
    QMenu menu;
    service->fillTreeContextMenu(&menu);
    menu.actions().at(0)->trigger();
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QVERIFY(fakeSdk().resets.empty());
}

void tst_TreeMenu::theMenuOpensOnRequest()
{
    start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    QStringList seen;
    QPoint where;
    QTimer::singleShot(0, this, [&] {
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        seen = texts(*menu);
        where = menu->pos();
        menu->close();
    });
    emit tree()->customContextMenuRequested(QPoint(3, 4));
    QCOMPARE(int(seen.size()), 3);
    QCOMPARE(where, tree()->viewport()->mapToGlobal(QPoint(3, 4)));
    QVERIFY(tree()->findChildren<QMenu *>().isEmpty());
}

void tst_TreeMenu::theHostMayDestroyWhileTheMenuIsOpen()
{
    start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    bool destroyed = false;
    QTimer::singleShot(0, this, [&] {
        destroyed = QApplication::activePopupWidget() != nullptr;
        CNetInfoUIService::Destroy();
    });
    emit tree()->customContextMenuRequested(QPoint(3, 4));
    QVERIFY(destroyed);
    QVERIFY(!tree());
}

void tst_TreeMenu::withoutATreeNoMenuOpens()
{
    CNetInfoUIService::instance()->showTreeContextMenu(QPoint(0, 0));
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_TreeMenu::pickReset()
{
    start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    QTimer::singleShot(0, this, [] {
        QWidget *const menu = QApplication::activePopupWidget();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    emit tree()->customContextMenuRequested(QPoint(3, 4));
}

void tst_TreeMenu::aResetPickedInTheMenuAsksWhenItHasClosed()
{
    bool open = true;
    fakeHost().duringMessage = [&] { open = QApplication::activePopupWidget() != nullptr; };
    pickReset();
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QVERIFY(!open);
    CNetInfoUIService::instance()->resetStatistics(); // outside the menu at once
    QCOMPARE(int(fakeHost().messages.size()), 2);
}

void tst_TreeMenu::theHostMayDestroyAtAResetPickedInTheMenu()
{
    fakeHost().messageAnswer = 1024;
    fakeHost().duringMessage = [] { CNetInfoUIService::Destroy(); };
    pickReset();
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QVERIFY(fakeSdk().resets.empty());
    QVERIFY(!tree());
}

void tst_TreeMenu::aRealRightClickOpensTheMenu()
{
    start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    bool opened = false;
    QTimer::singleShot(0, this, [&] {
        opened = QApplication::activePopupWidget() != nullptr;
        CNetInfoUIService::Destroy(); // also while the event is being delivered
    });
    QWidget *const viewport = tree()->viewport();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                            viewport->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(viewport, &event);
    QVERIFY(opened);
    QVERIFY(!tree());
}

QTEST_MAIN(tst_TreeMenu)
#include "tst_treemenu.moc"
