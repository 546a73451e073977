// The settings: in a dialog of their own, or where the plug-in itself shows its page on the stage.
#include "MainWindow.h"
#include "OkCancelBox.h"
#include "PluginStage.h"
#include "SettingsDialog.h"

#include <QAction>
#include <QActionGroup>
#include <QKeyEvent>
#include <QMenu>
#include <QTabBar>

void MainWindow::createSettings()
{
    connect(m_fileMenu, &QMenu::aboutToShow, this, &MainWindow::enableSettings);
    connect(m_stage, &PluginStage::settingsPageChanged, this, &MainWindow::onSettingsPageChanged);
    connect(m_settingsBox, &QDialogButtonBox::accepted, m_stage, &PluginStage::saveSettings);
    connect(m_settingsBox, &QDialogButtonBox::rejected, m_stage, &PluginStage::cancelSettings);
}

void MainWindow::setSettingModules(const SettingModules &modules)
{
    m_settingModules = modules;
    enableSettings();
}

void MainWindow::enableSettings()
{
    m_settings->setVisible(!namedModules(m_settingModules).isEmpty());
    m_settings->setEnabled(!m_settingsDialog && !m_stage->settingsPage());
}

void MainWindow::openSettings()
{
    enableSettings(); // a name may have gone since the last look; an unseen entry is never enabled
    if (!m_settings->isEnabled())
        return;
    m_settingsDialog = new SettingsDialog(namedModules(m_settingModules), this);
    connect(m_settingsDialog, &QDialog::finished, this, [this] {
        m_settingsDialog->deleteLater();
        m_settingsDialog = nullptr;
        onSettingsPageChanged(m_stage->settingsPage());
    });
    enableSettings();
    m_settingsDialog->open();
}

void MainWindow::onSettingsPageChanged(QWidget *page)
{
    if (page && m_settingsDialog) { // one place at a time
        m_settingsDialog->showPage();
        return;
    }
    m_tabs->setDisabled(page);
    m_views->setDisabled(page);
    m_settingsBox->setVisible(page);
    enableSettings();
    if (!page)
        return;
    m_settingsBox->followInTabOrder(page);
    if (QWidget *first = firstTabStop(page))
        first->setFocus();
}

// Enter and Escape that nothing on the stage has wanted for itself.
void MainWindow::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!m_stage->settingsPage())
        QMainWindow::keyPressEvent(event);
    else if (isEnter && isPlain)
        m_stage->saveSettings();
    else if (event->matches(QKeySequence::Cancel))
        m_stage->cancelSettings();
    else
        QMainWindow::keyPressEvent(event);
}
