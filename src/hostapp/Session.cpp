#include "Session.h"

#include "Console.h"
#include "HostTexts.h"
#include "MainWindow.h"
#include "PeriodStartWatch.h"
#include "PluginStage.h"
#include "StatusLine.h"

#include <HostPaths.h>
#include <Languages.h>
#include <PluginContainer.h>
#include <StartupHost.h>

#include <host/CommonUtils.h>
#include <host/IUIPlugin.h>
#include <host/velq_extension.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QStandardPaths>
#include <QWindow>

static HostSettings makeSettings(const Options &options)
{
    HostPaths::setUserDataDirectory(options.dataDirectory);
    return HostSettings(CommonUtils::getUserDataDirectory());
}

Session::Session(const Options &options, bool headless, const SdkCalls &sdk)
    : m_options(options)
    , m_headless(headless)
    , m_sdk(sdk)
    , m_settings(makeSettings(options))
    , m_report(options.demo)
    , m_connector(sdk.connect, VELQ_CONNECT_FAILED)
    , m_disconnector(sdk.disconnect, VELQ_DISCONNECT_FAILED)
{
}

// Plug-ins end first, while the widgets that they sit in are still there; then the feed, which
// waits for a running callback of the SDK.
Session::~Session()
{
    if (m_window)
        m_window->stage()->leave();
    if (m_container)
        m_container->destroyPlugins();
    m_feed.reset();
    m_window.reset();
    StartupHost::setPluginContainer(nullptr);
}

std::optional<int> Session::prepare()
{
    if (const auto status = prepareLanguages())
        return status;
    if (const auto status = prepareFolders())
        return status;
    if (const auto status = prepareSdk())
        return status;
    preparePeriodStart();
    loadPlugins();
    createWindow();
    connectConnection();
    if (!m_headless)
        placeWindow();
    startPlugins();
    return std::nullopt;
}

std::optional<int> Session::prepareLanguages()
{
    m_languages = std::make_unique<Languages>(HostPaths::languageDirectory());
    if (!m_languages->hasEnglish())
        printError(
            QStringLiteral("The texts are missing in %1.").arg(HostPaths::languageDirectory()));
    QString code = m_languages->match(m_options.language);
    if (!m_options.language.isEmpty() && code.isEmpty()) {
        printError(
            QStringLiteral("There is no language \"%1\"; there are %2.")
                .arg(m_options.language, m_languages->available().join(QStringLiteral(", "))));
        return kExitUsage;
    }
    if (code.isEmpty())
        code = m_languages->match(m_settings.language());
    if (code.isEmpty())
        code = m_languages->systemChoice();
    m_languages->use(code);
    QGuiApplication::setLayoutDirection(QLocale(code).textDirection());
    connect(m_languages.get(), &Languages::changed, this, &Session::onLanguageChanged);
    return std::nullopt;
}

std::optional<int> Session::prepareFolders()
{
    if (!CommonUtils::getUserDataDirectory().isEmpty())
        return std::nullopt;
    if (!m_options.dataDirectory.isEmpty()) {
        printError(
            QStringLiteral("The data folder %1 cannot be made.").arg(m_options.dataDirectory));
        return kExitUsage;
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    m_messages.append(hostText("HOST_NO_DATA_FOLDER").arg(folder + QLatin1String("/skylet")));
    printError(m_messages.constLast());
    return std::nullopt;
}

// Before any plug-in is loaded: the SDK takes these only while nobody has used it.
std::optional<int> Session::prepareSdk()
{
    const Options &given = m_options;
    if (!given.interfaceName.isEmpty()
        && VELQ_DevSrv_SetInterface(given.interfaceName.toUtf8().constData()) != 0) {
        printError(
            QStringLiteral("\"%1\" cannot be the name of an interface.").arg(given.interfaceName));
        return kExitUsage;
    }
    if (!given.dataDirectory.isEmpty()) {
        const QString store = CommonUtils::getUserDataDirectory() + QLatin1String("velq");
        if (VELQ_StoreSrv_SetDirectory(store.toUtf8().constData()) != 0)
            printError(QStringLiteral("The store cannot be kept in %1.").arg(store));
    }
    if (given.demo && VELQ_DevSrv_StartDemo() != 0)
        printError(QStringLiteral("The demonstration cannot be started."));
    return std::nullopt;
}

void Session::loadPlugins()
{
    m_container = std::make_unique<PluginContainer>(CommonUtils::GetPluginLibraryPath());
    addServices();
    StartupHost::setPluginContainer(m_container.get());
    m_container->load();
}

void Session::createWindow()
{
    m_window = std::make_unique<MainWindow>(m_languages->available());
    m_window->retranslate(m_languages->current());
    m_window->statusLine()->setDemo(m_options.demo);
    if (!m_headless)
        m_window->restoreGeometry(m_settings.geometry());
    const HostView view = m_options.view.value_or(m_settings.view().value_or(HostView::Statistics));
    m_window->setView(view);
    connect(m_window.get(), &MainWindow::languageChosen, this, &Session::onLanguageChosen);
    connect(m_window.get(), &MainWindow::closing, this, &Session::remember);
    m_feed = std::make_unique<LiveFeed>();
    connect(m_feed.get(), &LiveFeed::sampled, this, &Session::onSample);
}

// A dialog that a plug-in opens as it starts is centred over the window, so that has to be in
// place.
void Session::placeWindow()
{
    constexpr int patienceMs = 500; // a locked screen may not show it at all
    m_window->show();
    QElapsedTimer waiting;
    waiting.start();
    while (!m_window->windowHandle()->isExposed() && waiting.elapsed() < patienceMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, patienceMs);
}

static SettingModule settingModuleOf(QObject *plugin)
{
    QObject *controller = nullptr;
    if (auto *page = qobject_cast<IUIPlugin *>(plugin))
        page->QueryInterface(SettingModule::kControllerId, &controller);
    return SettingModule(controller);
}

// The first page plug-in takes the stage; the others have no place in this window, but may have
// one among the settings.
void Session::startPlugins()
{
    SettingModules modules;
    const auto plugins = m_container->plugins();
    for (QObject *plugin : plugins) {
        if (m_window->stage()->isEmpty() && !startPage(plugin))
            continue;
        modules.append(settingModuleOf(plugin));
    }
    m_window->setSettingModules(modules);
    if (m_window->stage()->isEmpty())
        m_window->showEmptyStage();
    showFailures();
    if (!m_feed->start())
        printError(QStringLiteral("The device SDK gives no live figures."));
}

bool Session::startPage(QObject *plugin)
{
    PluginStage *stage = m_window->stage();
    const QString file = m_container->fileOf(plugin);
    if (!stage->enter(plugin)) {
        m_container->addFailure({ file, hostText("HOST_PLUGIN_NOT_STARTED") });
        return false;
    }
    if (!stage->hasStatisticsPage())
        m_container->addFailure({ file, hostText("HOST_PLUGIN_NO_STATISTICS") });
    return true;
}

void Session::showFailures()
{
    QStringList messages = m_messages;
    const auto failures = m_container->failures();
    for (const PluginFailure &failure : failures) {
        messages.append(failure.text());
        printError(failure.text());
    }
    m_window->setMessages(messages);
}

void Session::onLanguageChosen(const QString &code)
{
    if (m_languages->use(code))
        m_settings.setLanguage(code);
    m_window->retranslate(m_languages->current());
}

// The direction comes first: plug-ins mirror their icons by it when they hear of the language.
void Session::onLanguageChanged()
{
    QGuiApplication::setLayoutDirection(QLocale(m_languages->current()).textDirection());
    m_window->retranslate(m_languages->current());
    m_window->stage()->languageChanged();
}
