// The controller's pages and its use of the host's services.
#include "NetInfoUIService.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPixmap>

#include <host/Change.h>
#include <host/IPluginContainer.h>
#include <host/Startup.h>

#include <new>

#include "NetInfoLog.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr char kSource[] = NETINFO_SERVICE_SOURCE;

constexpr int kLeftPaneWidth = 340; // the longest row of most languages
constexpr int kRightPaneWidth = 420;

constexpr const char *kLabelKeys[LabelCount]
    = { "IDS_TREE_SPEED", "IDS_TREE_DATA", "IDS_TREE_TIME_TRANSFER", "IDS_TREE_UPLOADED_DATA",
        "IDS_TREE_DOWNLOADED_DATA" };

} // namespace

void CNetInfoUIService::createAuxiliaryWidgets()
{
    if (m_page->content)
        return;
    m_page->content = new QWidget;
    QVBoxLayout *const rows = new QVBoxLayout(m_page->content);
    rows->setContentsMargins(0, 0, 0, 0);
    m_page->caption = new QLabel(m_page->content);
    m_page->contentRow = new QWidget(m_page->content);
    QHBoxLayout *const columns = new QHBoxLayout(m_page->contentRow);
    columns->setContentsMargins(0, 0, 0, 0);
}

void CNetInfoUIService::createMainWidget()
{
    if (m_page->mainWidget)
        return;
    QWidget *const page = new (std::nothrow) QWidget;
    QHBoxLayout *const layout = page ? new (std::nothrow) QHBoxLayout(page) : nullptr;
    m_page->mainWidget = page;
    m_page->splitter = layout ? new (std::nothrow) QSplitter(page) : nullptr;
    if (!m_page->splitter || !m_page->source) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for a Widget", kSource);
        delete page;
        return;
    }
    m_page->mainWidget->setObjectName(QLatin1String("NetInfoUIPlugin_WidgetParent"));
    m_page->splitter->setObjectName(QLatin1String("NetInfoUIPlugin_SplitterPane"));
    layout->setObjectName(QLatin1String("NetInfoUIPlugin_LayoutParent"));
    layout->setContentsMargins(3, 8, 3, 8);
    m_page->splitter->setHandleWidth(1);
    if (!m_page->dataLimitEnabled && !m_page->timeLimitEnabled) {
        connect(m_page->splitter, SIGNAL(splitterMoved(int, int)), this,
                SLOT(movedSplitter(int, int)));
    }
    if (!m_limits->prompt)
        m_limits->prompt.reset(new (std::nothrow) WarnPrompt);
    createLeftWidget();
    createGraphWidget();
    layout->addWidget(m_page->splitter);
}

void CNetInfoUIService::createLeftWidget()
{
    QWidget *const area = m_page->splitter ? new (std::nothrow) QWidget : nullptr;
    m_page->leftArea = area;
    m_page->leftLayout = area ? new (std::nothrow) QVBoxLayout(area) : nullptr;
    if (!m_page->leftLayout) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for widget", kSource);
        delete area;
        return;
    }
    m_page->leftArea->setObjectName(QLatin1String("NetInfoUIPlugin_WidgetLeftAreaParent"));
    m_page->leftLayout->setObjectName(QLatin1String("NetInfoUIPlugin_LayoutVerticalLeft"));
    m_page->leftLayout->setContentsMargins(0, 0, 0, 0);
    createStatisticsWidget();
    createVolumeLimitWidget();
    m_page->splitter->addWidget(m_page->leftArea);
    m_page->splitter->setSizes(QList<int>() << kLeftPaneWidth << kRightPaneWidth);
}

void CNetInfoUIService::createGraphWidget()
{
    if (m_page->graph)
        return;
    m_page->graph = m_page->splitter ? new (std::nothrow) GraphWidget(m_page->mainWidget) : nullptr;
    if (m_page->graph)
        m_page->graph->hide(); // until it is a pane
    if (!m_page->graph || !m_page->source) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for a widget", kSource);
        return;
    }
    if (!isFunctionEnabled("SHOWGRAPH"))
        return;
    m_page->graph->setObjectName(QLatin1String("NetInfoUIPlugin_WidgetGraph"));
    m_page->splitter->addWidget(m_page->graph);
    m_page->graph->show();
    m_page->splitter->setSizes(QList<int>() << kLeftPaneWidth << kRightPaneWidth);
    m_page->splitter->setStretchFactor(1, 1); // a wider page shows more of the past
}

void CNetInfoUIService::movedSplitter(int, int)
{
    if (!m_tree->tree)
        return;
    applyColumnWidth();
    m_tree->tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_tree->tree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void CNetInfoUIService::translateLabels()
{
    for (int i = 0; i < LabelCount; ++i)
        m_tree->labels[i] = tr(QLatin1String(kLabelKeys[i]));
}

QString CNetInfoUIService::tr(QString key)
{
    static const QString context = QLatin1String(NETINFO_MODULE_NAME);
    return Change::tr(context, key);
}

QIcon CNetInfoUIService::setIcon(QString path)
{
    const Qt::LayoutDirection direction = QApplication::layoutDirection();
    if (direction != m_page->iconDirection) {
        m_page->icons.clear();
        m_page->iconDirection = direction;
    }
    const auto known = m_page->icons.constFind(path);
    if (known != m_page->icons.constEnd())
        return *known;

    QImage image(path);
    if (direction == Qt::RightToLeft)
        image = QtCompat::mirroredImage(image);
    QIcon icon = image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image));
    m_page->icons.insert(path, icon);
    return icon;
}

bool CNetInfoUIService::isPluginAvailable(QString id)
{
    NETINFO_TRACE("%s : %s: %s:  Entered", kSource);
    IPluginContainer *const container = Startup::GetPluginContainer();
    return container && container->IsPluginAvailable(id);
}

bool CNetInfoUIService::isFunctionEnabled(const char *name) const
{
    return m_page->source && m_page->source->IsFunctionEnable(QLatin1String(name));
}
