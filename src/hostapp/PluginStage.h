#pragma once

#include "HostView.h"
#include "SettingModule.h"

#include <QPointer>
#include <QWidget>

class INotify;
class IUIPlugin;

//! The rectangle that a user-interface plug-in fills, and the calls that the host owes it. The
//! plug-in outlives this widget or is forgotten with leave().
class PluginStage : public QWidget
{
    Q_OBJECT
public:
    explicit PluginStage(QWidget *parent = nullptr);
    ~PluginStage() override;

    //! Asks \a plugin for its controller, starts it and puts it on the stage. False: it is no
    //! user-interface plug-in or did not start.
    [[nodiscard]] bool enter(QObject *plugin);
    //! Forgets the plug-in, which the host is about to end.
    void leave();
    [[nodiscard]] bool isEmpty() const;
    void setView(HostView view);
    [[nodiscard]] HostView view() const;
    //! Whether the plug-in has made a statistics page.
    [[nodiscard]] bool hasStatisticsPage() const;
    //! The plug-in's settings page while the plug-in shows it here, in place of the view; else
    //! null.
    [[nodiscard]] QWidget *settingsPage() const;
    [[nodiscard]] QSize minimumSizeHint() const override;

public slots:
    void languageChanged();
    void storedStatisticsChanged();
    //! Saves the settings page. When that succeeds the view is back.
    void saveSettings();
    //! Throws the settings page's changes away. The view is back.
    void cancelSettings();

signals:
    //! The settings page has come or, with null, gone.
    void settingsPageChanged(QWidget *page);

protected:
    bool event(QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *page(const char *name) const;
    [[nodiscard]] QWidget *statisticsPage() const;
    [[nodiscard]] bool isShowingStatistics() const;
    void notify(unsigned int message);
    void showPages();
    [[nodiscard]] QWidget *findSettingsPage() const;
    void lookForSettingsPage();

    QPointer<QObject> m_object; // the plug-in's own object; the two below are faces of it
    IUIPlugin *m_plugin = nullptr;
    INotify *m_notify = nullptr;
    SettingModule m_settings;
    QPointer<QWidget> m_settingsPage;
    bool m_isShowingSettings = false; // the page may have died meanwhile
    HostView m_view = HostView::Statistics;
};
