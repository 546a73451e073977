#include "PluginStage.h"

#include <host/INotify.h>
#include <host/IUIPlugin.h>

#include <QResizeEvent>

static constexpr int kControllerId = 0x1002; // the request that every page plug-in serves
static constexpr unsigned int kLanguageChanged = 320;
static constexpr unsigned int kStoredStatisticsChanged = 837;
static constexpr char kUsagePage[] = "NetInfoSettingDlg_MainWidget";
static constexpr char kStatisticsPage[] = "NetInfoUIPlugin_WidgetParent";

PluginStage::PluginStage(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("Host_Stage"));
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

QWidget *PluginStage::page(const char *name) const
{
    return findChild<QWidget *>(QLatin1String(name), Qt::FindDirectChildrenOnly);
}

QWidget *PluginStage::statisticsPage() const
{
    return page(kStatisticsPage);
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

// In Usage the page itself is resized: ShowWindow loads it anew, and with it what the user is
// typing.
void PluginStage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (isEmpty())
        return;
    if (isShowingStatistics()) {
        QRect area = rect();
        m_plugin->FitSize(area);
    } else if (QWidget *usage = page(kUsagePage)) {
        usage->setGeometry(rect());
    }
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
