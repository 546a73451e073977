#pragma once

#include "Devices.h"
#include "HostView.h"
#include "SettingModule.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <optional>

QT_BEGIN_NAMESPACE
class QAction;
class QActionGroup;
class QLabel;
class QMenu;
class QTabBar;
QT_END_NAMESPACE

class DeviceMenu;
class MessageBar;
class OkCancelBox;
class PluginStage;
class SettingsDialog;
class StatusLine;

//! The program's window: menus, the choice of the view, messages, the plug-in's stage, status.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    //! \a languages are the codes to choose from.
    explicit MainWindow(const QStringList &languages, QWidget *parent = nullptr);

    [[nodiscard]] PluginStage *stage() const;
    [[nodiscard]] StatusLine *statusLine() const;
    void setView(HostView view);
    [[nodiscard]] HostView view() const;
    void setMessages(const QStringList &messages);
    //! Whether there is a connection that could be ended.
    void setConnected(bool connected);
    //! Asked for the devices whenever the user wants to see them.
    void setDeviceReader(std::function<HostDevices()> reader);
    //! The choice of the device is not the user's in this run.
    void fixDevice();
    //! Says that the device cannot be chosen, because another process counts.
    void showDeviceRefused();
    //! Says that a connection is being made.
    void showConnecting();
    //! Says what came of it, a VELQ_CONNECT_ value, until something is connected.
    void showConnected(int result);
    //! Says that the connection is being ended.
    void showDisconnecting();
    //! Says what came of it, a VELQ_DISCONNECT_ value, until that is out of date.
    void showDisconnected(int result);
    //! The plug-ins that may have something to set, now or later.
    void setSettingModules(const SettingModules &modules);
    //! Says that the stage stays empty.
    void showEmptyStage();
    //! Fetches every text again; \a language is the one in force.
    void retranslate(const QString &language);

signals:
    void viewChosen(HostView view);
    void languageChosen(const QString &code);
    void deviceChosen(const QString &key);
    void connectChosen();
    void disconnectChosen();
    void closing();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void createMenus(const QStringList &languages);
    void createCentre();
    void createSettings();
    void enableConnection();
    void enableSettings();
    void openSettings();
    void onSettingsPageChanged(QWidget *page);

    QMenu *m_fileMenu = nullptr;
    QMenu *m_viewMenu = nullptr;
    DeviceMenu *m_deviceMenu = nullptr;
    QMenu *m_languageMenu = nullptr;
    QAction *m_connect = nullptr;
    QAction *m_disconnect = nullptr;
    QAction *m_settings = nullptr;
    QAction *m_quit = nullptr;
    QActionGroup *m_views = nullptr;
    QActionGroup *m_languages = nullptr;
    QTabBar *m_tabs = nullptr;
    MessageBar *m_messages = nullptr;
    PluginStage *m_stage = nullptr;
    QLabel *m_empty = nullptr;
    OkCancelBox *m_settingsBox = nullptr; //!< for the settings page on the stage
    QPointer<SettingsDialog> m_settingsDialog;
    SettingModules m_settingModules;
    StatusLine *m_status = nullptr;
    bool m_connected = false;
    bool m_changing = false; //!< a connection is being made or ended
    std::optional<int> m_disconnectResult; //!< what the message bar speaks of
    bool m_saysConnect = false; //!< it speaks of connecting
};
