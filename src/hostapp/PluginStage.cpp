#include "PluginStage.h"

#include <host/INotify.h>
#include <host/IUIPlugin.h>

#include <QResizeEvent>

static constexpr int kControllerId = 0x1002; // the request that every page plug-in serves
static constexpr unsigned int kLanguageChanged = 320;
static constexpr unsigned int kStoredStatisticsChanged = 837;
static constexpr int kSettledMs = 30;

PluginStage::PluginStage(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("Host_Stage"));
    m_settled.setSingleShot(true);
    m_settled.setInterval(kSettledMs);
    connect(&m_settled, &QTimer::timeout, this, &PluginStage::showUsage);
}

PluginStage::~PluginStage() = default;

bool PluginStage::enter(QObject *plugin)
{
    auto *page = qobject_cast<IUIPlugin *>(plugin);
    if (!page)
        return false;
    QObject *controller = nullptr;
    page->QueryInterface(kControllerId, &controller); // a plug-in without one can still be shown
    if (!page->Init() || !page->IsReady())
        return false;
    m_object = plugin;
    m_plugin = page;
    m_notify = qobject_cast<INotify *>(plugin);
    showPages();
    return true;
}

void PluginStage::leave()
{
    m_settled.stop();
    m_object = nullptr;
    m_plugin = nullptr;
    m_notify = nullptr;
}

bool PluginStage::isEmpty() const
{
    return !m_object;
}

void PluginStage::setView(HostView view)
{
    if (m_view == view)
        return;
    m_view = view;
    showPages();
}

HostView PluginStage::view() const
{
    return m_view;
}

QWidget *PluginStage::statisticsPage() const
{
    return findChild<QWidget *>(QStringLiteral("NetInfoUIPlugin_WidgetParent"),
                                Qt::FindDirectChildrenOnly);
}

bool PluginStage::hasStatisticsPage() const
{
    return statisticsPage() != nullptr;
}

bool PluginStage::isShowingStatistics() const
{
    return m_view == HostView::Statistics && hasStatisticsPage();
}

void PluginStage::languageChanged()
{
    notify(kLanguageChanged);
}

void PluginStage::storedStatisticsChanged()
{
    notify(kStoredStatisticsChanged);
}

void PluginStage::notify(unsigned int message)
{
    if (m_object && m_notify)
        m_notify->Notify(message, 0, 0);
}

void PluginStage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (isEmpty())
        return;
    if (isShowingStatistics()) {
        QRect area = rect();
        m_plugin->FitSize(area);
    } else {
        m_settled.start();
    }
}

void PluginStage::showUsage()
{
    if (isEmpty() || isShowingStatistics())
        return;
    QRect area = rect();
    m_plugin->ShowWindow(this, area);
}

// The pages become children of the stage in ShowWindow, so that comes first whatever is to be seen.
void PluginStage::showPages()
{
    if (isEmpty())
        return;
    QRect area = rect();
    m_plugin->ShowWindow(this, area);
    QWidget *page = statisticsPage();
    if (m_view != HostView::Statistics || !page)
        return;
    m_plugin->Hide();
    page->show();
    area = rect();
    m_plugin->FitSize(area);
}
