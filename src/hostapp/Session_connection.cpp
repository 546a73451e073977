#include "MainWindow.h"
#include "PeriodStartWatch.h"
#include "PluginStage.h"
#include "Session.h"

#include <PluginContainer.h>

#include <host/CommonUtils.h>

// The connection is made by this host itself; plug-ins ask for it by this identifier.
static const QLatin1String kConnectionPluginId("D0B83E56-19F2-4C6A-B7E4-05A9C31D8F62");
static const QLatin1String kNotifyServiceId("5B1E7C20-3D4A-4F6B-9C81-2A7D0E4F6B13");
static constexpr int kNotifyServiceKind = 8209;

// Who takes messages about the connection, and which ones.
static const QLatin1String kConnectionTarget("3F6A2B91-C84D-4E07-A1F3-6D52E0B9C724");
static constexpr unsigned int kDisconnectMessage = 514;

// After the SDK has its folder, before anybody asks it for statistics.
void Session::preparePeriodStart()
{
    m_periodStart = std::make_unique<PeriodStartWatch>(CommonUtils::getUserDataDirectory(),
                                                       m_sdk.setPeriodStart);
    m_periodStart->check();
}

void Session::addServices()
{
    m_container->addBuiltIn(kConnectionPluginId);
    m_container->addBuiltIn(kNotifyServiceId, &m_notifyService, kNotifyServiceKind);
    m_notifyService.addTarget(kConnectionTarget,
                              [this](unsigned int msg, unsigned int wparam, unsigned int lparam) {
                                  return onConnectionMessage(msg, wparam, lparam);
                              });
}

void Session::connectConnection()
{
    MainWindow *window = m_window.get();
    window->setDeviceReader(m_sdk.devices);
    if (!m_options.interfaceName.isEmpty())
        window->fixDevice();
    connect(window, &MainWindow::deviceChosen, this, &Session::onDeviceChosen);
    connect(&m_connector, &BlockingCall::started, window, &MainWindow::showConnecting);
    connect(&m_connector, &BlockingCall::finished, window, &MainWindow::showConnected);
    connect(window, &MainWindow::connectChosen, &m_connector, &BlockingCall::request);
    connect(&m_disconnector, &BlockingCall::started, window, &MainWindow::showDisconnecting);
    connect(&m_disconnector, &BlockingCall::finished, window, &MainWindow::showDisconnected);
    connect(window, &MainWindow::disconnectChosen, &m_disconnector, &BlockingCall::request);
    connect(m_periodStart.get(), &PeriodStartWatch::changed, window->stage(),
            &PluginStage::storedStatisticsChanged);
}

void Session::onDeviceChosen(const QString &key)
{
    if (m_sdk.useDevice(key.toUtf8().constData()) != 0)
        m_window->showDeviceRefused();
}

int Session::onConnectionMessage(unsigned int msg, unsigned int wparam, unsigned int lparam)
{
    const bool isDisconnect = msg == kDisconnectMessage && wparam == 0 && lparam == 0;
    return isDisconnect && m_disconnector.request() ? 0 : -1;
}
