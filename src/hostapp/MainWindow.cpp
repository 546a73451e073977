#include "MainWindow.h"

#include "ConnectNotice.h"
#include "DeviceMenu.h"
#include "DisconnectNotice.h"
#include "HostTexts.h"
#include "MessageBar.h"
#include "OkCancelBox.h"
#include "PluginStage.h"
#include "SettingsDialog.h"
#include "StatusLine.h"

#include <host/velq_extension.h>

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QVBoxLayout>

static constexpr HostView kViews[] = { HostView::Usage, HostView::Statistics };
static constexpr const char *kViewTexts[] = { "HOST_VIEW_USAGE", "HOST_VIEW_STATISTICS" };
static constexpr QSize kFirstSize(900, 640);

static QString languageName(const QString &code)
{
    const QString name = QLocale(code).nativeLanguageName();
    return name.isEmpty() ? code : name;
}

MainWindow::MainWindow(const QStringList &languages, QWidget *parent)
    : QMainWindow(parent)
    , m_status(new StatusLine(this))
{
    setObjectName(QStringLiteral("Host_MainWindow"));
    createMenus(languages);
    createCentre();
    createSettings();
    enableConnection();
    setStatusBar(m_status);
    resize(kFirstSize);
    retranslate(QStringLiteral("en"));
}

void MainWindow::createMenus(const QStringList &languages)
{
    m_fileMenu = menuBar()->addMenu(QString());
    m_connect = m_fileMenu->addAction(QString(), this, &MainWindow::connectChosen);
    m_connect->setObjectName(QStringLiteral("Host_Connect"));
    m_disconnect = m_fileMenu->addAction(QString(), this, &MainWindow::disconnectChosen);
    m_disconnect->setObjectName(QStringLiteral("Host_Disconnect"));
    m_settings = m_fileMenu->addAction(QString(), this, &MainWindow::openSettings);
    m_settings->setObjectName(QStringLiteral("Host_SettingsEntry"));
    m_settings->setShortcut(QKeySequence(int(Qt::CTRL) | int(Qt::Key_Comma)));
    m_settings->setMenuRole(QAction::PreferencesRole);
    m_fileMenu->addSeparator();
    m_quit = m_fileMenu->addAction(QString(), this, &QWidget::close);
    m_quit->setShortcut(QKeySequence::Quit);
    m_quit->setMenuRole(QAction::QuitRole);

    m_viewMenu = menuBar()->addMenu(QString());
    m_views = new QActionGroup(this);
    for (const HostView view : kViews) {
        QAction *action = m_viewMenu->addAction(QString());
        action->setShortcut(QKeySequence(int(Qt::CTRL) | (int(Qt::Key_1) + int(view))));
        action->setCheckable(true);
        m_views->addAction(action);
        connect(action, &QAction::triggered, this, [this, view] { setView(view); });
    }

    m_deviceMenu = new DeviceMenu(this);
    menuBar()->addMenu(m_deviceMenu);
    connect(m_deviceMenu, &DeviceMenu::deviceChosen, this, &MainWindow::deviceChosen);

    m_languageMenu = menuBar()->addMenu(QString());
    m_languageMenu->setObjectName(QStringLiteral("Host_Languages"));
    m_languages = new QActionGroup(this);
    for (const QString &code : languages) {
        QAction *action = m_languageMenu->addAction(languageName(code));
        action->setData(code);
        action->setCheckable(true);
        m_languages->addAction(action);
        connect(action, &QAction::triggered, this, [this, code] { emit languageChosen(code); });
    }
}

void MainWindow::createCentre()
{
    auto *centre = new QWidget(this);
    m_tabs = new QTabBar(centre);
    m_tabs->setObjectName(QStringLiteral("Host_Views"));
    m_tabs->setExpanding(false);
    m_tabs->setDrawBase(false);
    m_messages = new MessageBar(centre);
    m_stage = new PluginStage(centre);
    m_empty = new QLabel(centre);
    m_empty->setObjectName(QStringLiteral("Host_EmptyStage"));
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setWordWrap(true);
    m_empty->hide();
    m_settingsBox = new OkCancelBox(centre);
    m_settingsBox->hide();
    for (const HostView view : kViews) {
        static_cast<void>(view);
        m_tabs->addTab(QString());
    }
    m_tabs->setCurrentIndex(int(m_stage->view()));
    auto *layout = new QVBoxLayout(centre);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->setSpacing(4);
    layout->addWidget(m_tabs);
    layout->addWidget(m_messages);
    layout->addWidget(m_stage, 1);
    layout->addWidget(m_empty, 1);
    layout->addWidget(m_settingsBox);
    setCentralWidget(centre);
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) { setView(kViews[index]); });
}

PluginStage *MainWindow::stage() const
{
    return m_stage;
}

StatusLine *MainWindow::statusLine() const
{
    return m_status;
}

void MainWindow::setView(HostView view)
{
    m_views->actions().at(int(view))->setChecked(true);
    m_tabs->setCurrentIndex(int(view)); // comes back here with the same view
    if (m_stage->view() == view)
        return;
    m_stage->setView(view);
    emit viewChosen(view);
}

HostView MainWindow::view() const
{
    return m_stage->view();
}

void MainWindow::setMessages(const QStringList &messages)
{
    m_messages->setMessages(messages);
}

void MainWindow::setConnected(bool connected)
{
    if (m_connected == connected)
        return;
    m_connected = connected;
    enableConnection();
    if (m_saysConnect && connected) {
        m_saysConnect = false;
        m_messages->setNotice({});
    }
    if (m_disconnectResult && isDisconnectNoticeOver(*m_disconnectResult, connected)) {
        m_disconnectResult.reset();
        m_messages->setNotice({});
    }
}

void MainWindow::setDeviceReader(std::function<HostDevices()> reader)
{
    m_deviceMenu->setReader(std::move(reader));
}

void MainWindow::fixDevice()
{
    m_deviceMenu->setEnabled(false);
}

void MainWindow::showDeviceRefused()
{
    m_disconnectResult.reset();
    m_saysConnect = false;
    m_messages->setNotice({ "HOST_DEVICE_REFUSED", true });
}

void MainWindow::showConnecting()
{
    m_changing = true;
    m_disconnectResult.reset();
    m_saysConnect = true;
    enableConnection();
    m_messages->setNotice({ "HOST_CONNECTING", false });
}

void MainWindow::showConnected(int result)
{
    m_changing = false;
    enableConnection();
    m_saysConnect = !m_connected && result != VELQ_CONNECT_DONE;
    m_messages->setNotice(m_saysConnect ? connectNotice(result) : Notice());
}

void MainWindow::showDisconnecting()
{
    m_changing = true;
    m_saysConnect = false;
    m_disconnectResult.reset();
    enableConnection();
    m_messages->setNotice({ "HOST_DISCONNECTING", false });
}

void MainWindow::showDisconnected(int result)
{
    m_changing = false;
    m_disconnectResult = result;
    enableConnection();
    m_messages->setNotice(disconnectNotice(result));
}

void MainWindow::enableConnection()
{
    m_connect->setEnabled(!m_connected && !m_changing);
    m_disconnect->setEnabled(m_connected && !m_changing);
}

void MainWindow::showEmptyStage()
{
    m_stage->hide();
    m_empty->show();
}

void MainWindow::retranslate(const QString &language)
{
    setWindowTitle(hostText("HOST_TITLE"));
    m_fileMenu->setTitle(hostText("HOST_MENU_FILE"));
    m_viewMenu->setTitle(hostText("HOST_MENU_VIEW"));
    m_deviceMenu->retranslate();
    m_languageMenu->setTitle(hostText("HOST_MENU_LANGUAGE"));
    m_connect->setText(hostText("HOST_CONNECT"));
    m_disconnect->setText(hostText("HOST_DISCONNECT"));
    m_settings->setText(hostText("HOST_SETTINGS"));
    m_quit->setText(hostText("HOST_QUIT"));
    for (const HostView view : kViews) {
        const QString text = hostText(kViewTexts[int(view)]);
        m_views->actions().at(int(view))->setText(text);
        m_tabs->setTabText(int(view), text);
    }
    m_views->actions().at(int(view()))->setChecked(true);
    for (QAction *action : m_languages->actions())
        action->setChecked(action->data().toString() == language);
    m_tabs->setAccessibleName(hostText("HOST_VIEWS"));
    m_stage->setAccessibleName(hostText("HOST_PAGE"));
    m_empty->setText(hostText("HOST_NO_PLUGIN"));
    m_settingsBox->retranslate();
    if (m_settingsDialog)
        m_settingsDialog->retranslate();
    enableSettings();
    m_messages->retranslate();
    m_status->retranslate();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    emit closing();
    QMainWindow::closeEvent(event);
}
