#pragma once

#include "HostView.h"

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

public slots:
    void languageChanged();
    void storedStatisticsChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *page(const char *name) const;
    [[nodiscard]] QWidget *statisticsPage() const;
    [[nodiscard]] bool isShowingStatistics() const;
    void notify(unsigned int message);
    void showPages();

    QPointer<QObject> m_object; // the plug-in's own object; the two below are faces of it
    IUIPlugin *m_plugin = nullptr;
    INotify *m_notify = nullptr;
    HostView m_view = HostView::Statistics;
};
