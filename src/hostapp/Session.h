#pragma once

#include "BlockingCall.h"
#include "ConsoleReport.h"
#include "HostSettings.h"
#include "LiveFeed.h"
#include "Options.h"
#include "SdkCalls.h"

#include <NotifyService.h>

#include <QObject>

#include <memory>
#include <optional>

class Languages;
class MainWindow;
class PeriodStartWatch;
class PluginContainer;

//! One run of the program: prepares the SDK, the languages, the plug-ins and the window, and takes
//! them down in the order that the plug-ins need. On the stack of main(), after the application.
class Session : public QObject
{
    Q_OBJECT
public:
    //! \a headless: there is no display, so figures are printed and a picture is written.
    Session(const Options &options, bool headless, const SdkCalls &sdk = {});
    ~Session() override;

    //! Everything that comes before the window. An exit status when the program cannot go on.
    [[nodiscard]] std::optional<int> prepare();
    //! Shows the window and runs until the end. The exit status.
    [[nodiscard]] int run();

private:
    [[nodiscard]] std::optional<int> prepareFolders();
    [[nodiscard]] std::optional<int> prepareLanguages();
    [[nodiscard]] std::optional<int> prepareSdk();
    void preparePeriodStart();
    void loadPlugins();
    void addServices();
    void connectConnection();
    void onDeviceChosen(const QString &key);
    [[nodiscard]] int onConnectionMessage(unsigned int msg, unsigned int wparam,
                                          unsigned int lparam);
    void createWindow();
    void placeWindow();
    void startPlugins();
    [[nodiscard]] bool startPage(QObject *plugin);
    void showFailures();
    void onLanguageChosen(const QString &code);
    void onLanguageChanged();
    void onSample(const LiveSample &sample);
    void remember();
    void scheduleEnd();
    [[nodiscard]] int samplesToPrint() const;
    [[nodiscard]] int finishRun();
    [[nodiscard]] bool savePicture();

    const Options m_options;
    const bool m_headless;
    const SdkCalls m_sdk;
    HostSettings m_settings;
    NotifyService m_notifyService;
    QStringList m_messages; //!< for the message bar, besides the plug-ins' failures
    std::unique_ptr<Languages> m_languages;
    std::unique_ptr<PluginContainer> m_container;
    std::unique_ptr<LiveFeed> m_feed;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<PeriodStartWatch> m_periodStart;
    ConsoleReport m_report;
    BlockingCall m_connector; //!< these last, so that their waits at the end come first
    BlockingCall m_disconnector;
};
