#pragma once
// The program's window with a plug-in on its stage that has settings.

#include <MainWindow.h>
#include <PluginStage.h>
#include <SettingsDialog.h>

#include <Languages.h>

#include <host/ISettingUIPlugin.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScopedPointer>
#include <QtTest>

#include "LibraryFolder.h"
#include "LoadedPlugin.h"
#include "TestLog.h"

class WindowSettingsTest : public QObject
{
    Q_OBJECT
protected:
    template <typename Widget = QWidget>
    [[nodiscard]] Widget *child(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    [[nodiscard]] QAction *entry() const
    {
        return child<QAction>("Host_SettingsEntry");
    }
    [[nodiscard]] SettingsDialog *dialog() const
    {
        return child<SettingsDialog>("Host_Settings");
    }
    [[nodiscard]] ISettingUIPlugin *controller() const
    {
        return qobject_cast<ISettingUIPlugin *>(m_plugin);
    }
    [[nodiscard]] bool isStageInUse() const // and everything that goes with it
    {
        return m_window->stage()->settingsPage() && child("Host_SettingsOk")->isVisible()
            && !entry()->isEnabled() && !child("Host_Views")->isEnabled()
            && !viewEntry(0)->isEnabled();
    }
    [[nodiscard]] bool isStageFree() const
    {
        return !m_window->stage()->settingsPage() && !child("Host_SettingsOk")->isVisible()
            && entry()->isEnabled() && child("Host_Views")->isEnabled()
            && viewEntry(0)->isEnabled();
    }
    [[nodiscard]] QAction *viewEntry(int view) const
    {
        return m_window->menuBar()->actions().at(1)->menu()->actions().at(view);
    }
    void showOnStage();

    QScopedPointer<Languages> m_languages;
    QScopedPointer<LibraryFolder> m_folder;
    QScopedPointer<MainWindow> m_window;
    QObject *m_plugin = nullptr;
    QScopedPointer<TestLog> m_log;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};
