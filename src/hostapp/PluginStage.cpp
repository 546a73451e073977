#include "PluginStage.h"

#include <host/INotify.h>
#include <host/IUIPlugin.h>

#include <QChildEvent>
#include <QResizeEvent>

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
    // A plug-in without a controller can still be shown.
    page->QueryInterface(SettingModule::kControllerId, &controller);
    if (!page->Init() || !page->IsReady())
        return false;
    m_object = plugin;
    m_plugin = page;
    m_notify = qobject_cast<INotify *>(plugin);
    m_settings = SettingModule(controller);
    showPages();
    return true;
}

void PluginStage::leave()
{
    m_object = nullptr;
    m_plugin = nullptr;
    m_notify = nullptr;
    m_settings = SettingModule();
    lookForSettingsPage();
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
    if (!m_isShowingSettings)
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
    if (m_settingsPage) {
        m_settingsPage->setGeometry(rect());
    } else if (isShowingStatistics()) {
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

QWidget *PluginStage::settingsPage() const
{
    return m_settingsPage;
}

QSize PluginStage::minimumSizeHint() const
{
    return m_settingsPage
        ? m_settingsPage->minimumSizeHint().expandedTo(m_settingsPage->minimumSize())
        : QWidget::minimumSizeHint();
}

bool PluginStage::event(QEvent *event)
{
    // The page may need another size, as after a change of the language.
    if (event->type() == QEvent::LayoutRequest && m_settingsPage)
        updateGeometry();
    return QWidget::event(event);
}

// The plug-in puts its settings page here, and takes it away, without a word; that the page is
// active is true only after it has come.
void PluginStage::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    QMetaObject::invokeMethod(this, &PluginStage::lookForSettingsPage, Qt::QueuedConnection);
}

QWidget *PluginStage::findSettingsPage() const
{
    if (!m_settings.isActive())
        return nullptr;
    const auto children = findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        const bool isView = child == page(kUsagePage) || child == page(kStatisticsPage);
        if (!child->isWindow() && !isView)
            return child;
    }
    return nullptr;
}

void PluginStage::lookForSettingsPage()
{
    QWidget *found = findSettingsPage();
    if (found == m_settingsPage && m_isShowingSettings == (found != nullptr))
        return;
    m_settingsPage = found;
    m_isShowingSettings = found != nullptr;
    updateGeometry();
    if (found) {
        m_plugin->Hide(); // nothing of the view is to shine through
        found->setGeometry(rect());
    } else {
        showPages();
    }
    emit settingsPageChanged(found);
}

void PluginStage::saveSettings()
{
    const QPointer<PluginStage> self(this); // the page's message runs an event loop
    if (m_settings.save() && self)
        lookForSettingsPage();
}

void PluginStage::cancelSettings()
{
    m_settings.cancel();
    lookForSettingsPage();
}
