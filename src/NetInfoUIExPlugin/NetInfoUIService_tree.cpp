// The statistics tree.
#include "NetInfoUIService.h"

#include <QHeaderView>
#include <QPainter>
#include <QPen>
#include <QStyleOptionViewItem>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <host/CommonUtils.h>

#include <algorithm>
#include <array>
#include <new>

#include "NetInfoLog.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr char kSource[] = NETINFO_SERVICE_SOURCE;

constexpr int kTopLevel = -1;

//! One node or row: its place, its icon, its fixed text (null for rows of figures) and the switch
//! that hides it (null: always shown).
struct RowSpec
{
    int parent;
    const char *icon;
    const char *key;
    const char *function;
};

constexpr RowSpec kRows[TreeRowCount] = {
    { kTopLevel, "Icon_01", "IDS_TREE_TRANSFER", "TRANSFER" },
    { TransferNode, "Icon_09", nullptr, "TRANSFERTIME" },
    { TransferNode, "Icon_02", "IDS_TREE_UPLOAD", "TRANSFERUPLOAD" },
    { UploadNode, "Icon_09", nullptr, nullptr },
    { UploadNode, "Icon_09", nullptr, nullptr },
    { TransferNode, "Icon_03", "IDS_TREE_DOWNLOAD", "TRANSFERDOWNLOAD" },
    { DownloadNode, "Icon_09", nullptr, nullptr },
    { DownloadNode, "Icon_09", nullptr, nullptr },
    { kTopLevel, "Icon_04", "IDS_TREE_STATISTICS", "STATISTICS" },
    { StatisticsNode, "Icon_09", "IDS_TREE_TIME_LASTRESET", "SHOWRESETSTATISTICS" },
    { StatisticsNode, "Icon_06", "IDS_TREE_DAILY", "STATISTICSDAILY" },
    { DailyNode, "Icon_09", nullptr, nullptr },
    { DailyNode, "Icon_09", nullptr, nullptr },
    { StatisticsNode, "Icon_07", "IDS_TREE_MONTHLY", "STATISTICSMONTHLY" },
    { MonthlyNode, "Icon_09", nullptr, nullptr },
    { MonthlyNode, "Icon_09", nullptr, nullptr },
    { StatisticsNode, "Icon_08", "IDS_TREE_YEARLY", "STATISTICSYEARLY" },
    { YearlyNode, "Icon_09", nullptr, nullptr },
    { YearlyNode, "Icon_09", nullptr, nullptr },
    { kTopLevel, nullptr, "IDS_NOTES", "STATISTICSNOTES" },
};

int ancestorCount(const QTreeWidgetItem *item)
{
    int count = 0;
    for (const QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent())
        ++count;
    return count;
}

} // namespace

GridDelegateLayout::GridDelegateLayout(QObject *parent)
    : QItemDelegate(parent)
{
}

void GridDelegateLayout::drawFocus(QPainter *painter, const QStyleOptionViewItem &option,
                                   const QRect &) const
{
    if (option.state & QStyle::State_HasFocus)
        painter->setPen(QPen(QBrush(Qt::white), 0));
}

void CNetInfoUIService::createStatisticsWidget()
{
    if (m_tree->tree)
        return;
    QTreeWidget *const tree = new (std::nothrow) QTreeWidget;
    QItemDelegate *const delegate = tree ? new (std::nothrow) GridDelegateLayout(tree) : nullptr;
    QTreeWidgetItem *const transfer = delegate ? new (std::nothrow) QTreeWidgetItem(tree) : nullptr;
    QTreeWidgetItem *const statistics
        = transfer ? new (std::nothrow) QTreeWidgetItem(tree) : nullptr;
    if (!statistics || !m_page->leftLayout) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for widget", kSource);
        delete tree;
        return;
    }
    m_tree->tree = tree;
    m_tree->items[TransferNode] = transfer;
    m_tree->items[StatisticsNode] = statistics;
    setUpTree(delegate);
    const bool named = isPluginAvailable(QLatin1String(NETINFO_DIALUP_PLUGIN));
    addRow(TransferNode, transferText(named ? "IDS_DIALUP_TRANSFER" : nullptr));
    if (isFunctionEnabled("TRANSFERTIME"))
        addRow(TimeRow, labelled(TimeLabel, m_live->time));
    addUpLoadWidgetStatisticsWidget();
    addDownLoadWidgetStatisticsWidget();
    m_page->leftLayout->addWidget(tree);
    applySwitch(TransferNode);
    addStatisticsNodeComponets();
}

void CNetInfoUIService::setUpTree(QItemDelegate *delegate)
{
    QTreeWidget *const tree = m_tree->tree;
    connect(tree, SIGNAL(destroyed()), this, SLOT(forgetTree()));
    tree->setObjectName(QLatin1String("NetInfoUIPlugin_WidgetTree"));
    tree->setAccessibleName(GetWindowTitle());
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree, SIGNAL(customContextMenuRequested(const QPoint &)), this,
            SLOT(showTreeContextMenu(const QPoint &)));
    tree->setHeaderHidden(true);
    tree->setRootIsDecorated(false);
    tree->setTextElideMode(Qt::ElideNone);
    tree->setSelectionBehavior(QAbstractItemView::SelectItems);
    tree->setItemDelegate(delegate);
    tree->setUniformRowHeights(true); // else each new text is laid out to learn its height
    tree->header()->setStretchLastSection(false); // else the only column has the view's width
    tree->setColumnWidth(0, m_tree->firstColumnWidth);
    tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tree->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void CNetInfoUIService::addUpLoadWidgetStatisticsWidget()
{
    if (!m_tree->items[TransferNode] || !m_page->source) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for widget", kSource);
        return;
    }
    addRow(UploadNode, nodeText(UploadNode));
    addRow(UploadSpeedRow, labelled(SpeedLabel, speedText(0)));
    addRow(UploadDataRow, labelled(DataLabel, fluxText(0)));
    applySwitch(UploadNode);
}

void CNetInfoUIService::addDownLoadWidgetStatisticsWidget()
{
    if (!m_tree->items[TransferNode] || !m_page->source) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for widget", kSource);
        return;
    }
    addRow(DownloadNode, nodeText(DownloadNode));
    addRow(DownloadSpeedRow, labelled(SpeedLabel, speedText(0)));
    addRow(DownloadDataRow, labelled(DataLabel, fluxText(0)));
    applySwitch(DownloadNode);
}

void CNetInfoUIService::addStatisticsNodeComponets()
{
    if (!m_tree->tree || !m_page->source) {
        NETINFO_TRACE("%s: %s: %s: InVal Args", kSource);
        return;
    }
    addRow(StatisticsNode, nodeText(StatisticsNode));
    m_page->source->GetLastResetTime(m_live->lastReset);
    addRow(LastResetRow, nodeText(LastResetRow) + QLatin1Char(' ') + m_live->lastReset);
    applySwitch(LastResetRow);
    addRow(DailyNode, nodeText(DailyNode));
    addRow(DailyUploadRow, labelled(UploadedLabel, fluxText(0)));
    addRow(DailyDownloadRow, labelled(DownloadedLabel, fluxText(0)));
    applySwitch(DailyNode);
    addStatisticsMonthlyNode();
    addStatisticsYearlyNode();
    applySwitch(StatisticsNode);
}

void CNetInfoUIService::addStatisticsMonthlyNode()
{
    if (!m_tree->items[StatisticsNode] || !m_page->source) {
        NETINFO_TRACE("%s: %s: %s: InVal Args", kSource);
        return;
    }
    addRow(MonthlyNode, nodeText(MonthlyNode));
    addRow(MonthlyUploadRow, labelled(UploadedLabel, fluxText(0)));
    addRow(MonthlyDownloadRow, labelled(DownloadedLabel, fluxText(0)));
    applySwitch(MonthlyNode);
}

void CNetInfoUIService::addStatisticsYearlyNode()
{
    if (!m_tree->items[StatisticsNode] || !m_page->source) {
        NETINFO_TRACE("%s: %s: %s: InVal Args", kSource);
        return;
    }
    addRow(YearlyNode, nodeText(YearlyNode));
    addRow(YearlyUploadRow, labelled(UploadedLabel, fluxText(0)));
    addRow(YearlyDownloadRow, labelled(DownloadedLabel, fluxText(0)));
    applySwitch(YearlyNode);
}

void CNetInfoUIService::addNoteInTree()
{
    const std::array<QWidget *, 4> meters = { m_limits->dataCaption, m_limits->dataMeter,
                                              m_limits->timeCaption, m_limits->timeMeter };
    if (!m_tree->tree || !m_page->source || m_tree->items[NotesItem]
        || std::count(meters.begin(), meters.end(), nullptr) > 0)
        return;
    for (QWidget *meter : meters)
        meter->setVisible(false);

    if (QTreeWidgetItem *const spacer = new (std::nothrow) QTreeWidgetItem(m_tree->tree))
        spacer->setFlags(spacer->flags() & ~(Qt::ItemIsSelectable | Qt::ItemIsEnabled));
    addRow(NotesItem, nodeText(NotesItem));
    m_tree->tree->setExpandsOnDoubleClick(true);
    applySwitch(NotesItem);
    applySwitch(LastResetRow);
}

void CNetInfoUIService::checkTreeColumnWidth(QTreeWidgetItem *item)
{
    QTreeWidget *const tree = m_tree->tree;
    if (!item || !tree)
        return;
    const QString text = item->text(0);
    const QFont font = item->data(0, Qt::FontRole).value<QFont>();
    const int indent
        = NetInfoRules::requiredColumnWidth(0, tree->indentation(), ancestorCount(item));
    if (m_tree->meter.surelyFits(font, text, NetInfoRules::kFirstColumnWidth - indent))
        return;
    const int required = m_tree->meter.width(font, text) + indent;
    if (!NetInfoRules::widensColumn(required))
        return;
    m_tree->widestRequired = NetInfoRules::widenedColumn(required, m_tree->widestRequired);
    tree->setColumnWidth(0, m_tree->widestRequired);
    tree->setMinimumWidth(1);
    tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    tree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void CNetInfoUIService::enableScroll()
{
    QTreeWidget *const tree = m_tree->tree;
    if (!tree)
        return;
    const QMargins margins = tree->contentsMargins();
    tree->setColumnWidth(0, tree->contentsRect().width() - margins.left() - margins.right());
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        checkTreeColumnWidth(*it);
}

void CNetInfoUIService::forgetTree()
{
    m_tree->tree = nullptr; // no longer a tree: its destructor is running
    for (QTreeWidgetItem *&item : m_tree->items)
        item = nullptr;
}

void CNetInfoUIService::addRow(int row, const QString &text)
{
    QTreeWidgetItem *&item = m_tree->items[row];
    const RowSpec &spec = kRows[row];
    if (!item && spec.parent == kTopLevel)
        item = new (std::nothrow) QTreeWidgetItem(m_tree->tree);
    else if (!item && m_tree->items[spec.parent])
        item = new (std::nothrow) QTreeWidgetItem(m_tree->items[spec.parent]);
    if (!item)
        return; // no memory: the updates skip the row
    item->setText(0, text);
    if (spec.icon)
        item->setIcon(0, rowIcon(row));
    item->setExpanded(true);
}

void CNetInfoUIService::applySwitch(int row)
{
    // Only an item that is in the tree can be hidden.
    if (m_tree->items[row] && !isFunctionEnabled(kRows[row].function))
        m_tree->items[row]->setHidden(true);
}

void CNetInfoUIService::writeRow(int row, const QString &text, const QIcon &icon)
{
    QTreeWidgetItem *const item = m_tree->items[row];
    if (!item)
        return;
    if (item->icon(0).cacheKey() != icon.cacheKey())
        item->setIcon(0, icon);
    writeRow(row, text);
}

void CNetInfoUIService::writeRow(int row, const QString &text)
{
    QTreeWidgetItem *const item = m_tree->items[row];
    if (!item)
        return;
    item->setText(0, text);
    checkTreeColumnWidth(item);
}

QString CNetInfoUIService::nodeText(int row)
{
    const QString text = tr(QLatin1String(kRows[row].key));
    return row == NotesItem ? QLatin1String("     ") + text : text;
}

QString CNetInfoUIService::labelled(int label, const QString &value) const
{
    return m_tree->labels[label] + QLatin1Char(' ') + value;
}

QString CNetInfoUIService::speedText(quint64 bytesPerSecond) const
{
    return CommonUtils::SpeedFluxToString(m_tree->speedUnits, bytesPerSecond,
                                          QLatin1String(NETINFO_MODULE_NAME));
}

QString CNetInfoUIService::fluxText(quint64 bytes) const
{
    return CommonUtils::SpeedFluxToString(m_tree->fluxUnits, bytes,
                                          QLatin1String(NETINFO_MODULE_NAME));
}

QIcon CNetInfoUIService::rowIcon(int row)
{
    return setIcon(CommonUtils::GetPluginLibraryPath()
                   + QLatin1String("/plugins/NetInfoUIExPlugin/") + QLatin1String(kRows[row].icon));
}
