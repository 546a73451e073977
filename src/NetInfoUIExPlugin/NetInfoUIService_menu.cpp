// The tree's context menu.
#include "NetInfoUIService.h"

#include <QMenu>
#include <QPointer>
#include <QTreeWidget>

#include <new>
#include <utility>

#include "NetInfoLog.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr char kSource[] = NETINFO_SERVICE_SOURCE;

} // namespace

void CNetInfoUIService::createRightClickActions()
{
    if (m_tree->resetAll)
        return;
    m_tree->resetAll = new (std::nothrow) QAction(this);
    m_tree->expandAll = new (std::nothrow) QAction(this);
    m_tree->collapseAll = new (std::nothrow) QAction(this);
    if (!m_tree->resetAll || !m_tree->expandAll || !m_tree->collapseAll) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for a Widget", kSource);
        return;
    }
    m_tree->resetAll->setObjectName(QLatin1String("NetInfoUIPlugin_ActionResetAll"));
    m_tree->expandAll->setObjectName(QLatin1String("NetInfoUIPlugin_ActionExpandAll"));
    m_tree->collapseAll->setObjectName(QLatin1String("NetInfoUIPlugin_ActionCollapseAll"));
    updateRightClickItems();
    connect(m_tree->resetAll, SIGNAL(triggered()), this, SLOT(resetStatistics()));
    connect(m_tree->expandAll, SIGNAL(triggered()), this, SLOT(expandAll()));
    connect(m_tree->collapseAll, SIGNAL(triggered()), this, SLOT(collapseAll()));
}

void CNetInfoUIService::updateRightClickItems()
{
    if (m_tree->resetAll)
        m_tree->resetAll->setText(tr(QLatin1String("IDS_CLEAR_VOLUME")));
    if (m_tree->expandAll)
        m_tree->expandAll->setText(tr(QLatin1String("IDS_EXPAND_ALL")));
    if (m_tree->collapseAll)
        m_tree->collapseAll->setText(tr(QLatin1String("IDS_COLLAPSE_ALL")));
}

void CNetInfoUIService::fillTreeContextMenu(QMenu *menu)
{
    if (isFunctionEnabled("STATISTICS"))
        menu->addAction(m_tree->resetAll);
    menu->addAction(m_tree->expandAll);
    menu->addAction(m_tree->collapseAll);
}

void CNetInfoUIService::showTreeContextMenu(const QPoint &position)
{
    const bool complete = m_tree->tree && m_tree->resetAll && m_tree->expandAll
        && m_tree->collapseAll && m_page->source;
    if (!complete)
        return;
    // The menu runs an event loop in which the host may destroy the controller, or the tree and
    // with it the menu.
    const QPointer<CNetInfoUIService> self(this);
    const QPointer<QMenu> menu = new QMenu(m_tree->tree);
    fillTreeContextMenu(menu);
    m_tree->menuOpen = true;
    menu->exec(m_tree->tree->viewport()->mapToGlobal(position));
    delete menu;
    if (!self)
        return;
    m_tree->menuOpen = false;
    if (std::exchange(m_tree->resetPicked, false))
        onResetButtonClicked();
}

void CNetInfoUIService::expandAll()
{
    NETINFO_TRACE("%s: %s: %s called", kSource);
    if (m_tree->tree)
        m_tree->tree->expandAll();
}

void CNetInfoUIService::collapseAll()
{
    NETINFO_TRACE("%s: %s: %s called", kSource);
    if (m_tree->tree)
        m_tree->tree->collapseAll();
}

void CNetInfoUIService::resetStatistics()
{
    // Picked in the open menu: the question waits until the menu's own handlers have ended, because
    // the host may destroy the menu while it is open.
    if (m_tree->menuOpen)
        m_tree->resetPicked = true;
    else
        onResetButtonClicked();
}
