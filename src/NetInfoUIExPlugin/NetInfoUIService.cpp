// Lifecycle and host commands of the controller.
#include "NetInfoUIService.h"

#include <QTreeWidget>

#include "NetInfoLog.h"
#include "NetInfoSettingUIPlugin.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr char kSource[] = NETINFO_SERVICE_SOURCE;

constexpr unsigned int kLanguageChanged = 320;
constexpr unsigned int kStoredStatisticsChanged = 837;

//! Puts \a page into \a rect of \a parent.
void placePage(QWidget *page, QWidget *parent, const QRect &rect, int sideMargin)
{
    page->setParent(parent);
    page->resize(rect.width(), rect.height());
    page->move(rect.topLeft());
    page->setContentsMargins(sideMargin, 0, sideMargin, 0);
    page->setAttribute(Qt::WA_MouseTracking);
}

void detach(QWidget *page)
{
    if (page)
        page->setParent(nullptr);
}

} // namespace

CNetInfoUIService *CNetInfoUIService::m_pInstance = nullptr;

CNetInfoUIService *CNetInfoUIService::instance()
{
    if (!m_pInstance)
        m_pInstance = new CNetInfoUIService;
    return m_pInstance;
}

void CNetInfoUIService::Destroy()
{
    // Cleared first: what the host does as its pages go may lead here again.
    CNetInfoUIService *const dying = m_pInstance;
    m_pInstance = nullptr;
    if (dying)
        dying->OnDestroy();
    delete dying;
}

CNetInfoUIService::CNetInfoUIService()
    : m_page(new Page)
    , m_tree(new TreeRows)
    , m_live(new LiveFigures)
    , m_limits(new Limits)
    , m_operator(new OperatorPage)
{
    NETINFO_TRACE_CALL("%s: %s called", kSource);
    m_limits->store = NetInfoSettingUILogic::GetInstance();
    if (!m_limits->store)
        return;
    m_limits->store->GetUseLimitSetting();
    // Completes a short record: the page's load is appended, and must not slide into this one.
    m_limits->store->updateUseLimitSetting(VLS_START_MONTH_DATE,
                                           m_limits->store->value(VLS_START_MONTH_DATE));
}

CNetInfoUIService::~CNetInfoUIService()
{
    NETINFO_TRACE_CALL("%s: %s called", kSource);
}

bool CNetInfoUIService::Init()
{
    NETINFO_TRACE_CALL("%s: %s: called", kSource);
    // The host may call twice: what is there is not built again, and what died with a window is.
    createAuxiliaryWidgets();
    startStatistics();
    createMainWidget();
    createRightClickActions();
    createOperatorPage();
    initRecurrence();
    initDataVolume();
    createNRLMainWidget();
    initNRLNetInfoSettings();
    return true;
}

void CNetInfoUIService::startStatistics()
{
    if (m_page->source)
        return;
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    m_page->source = source;
    if (!m_page->settings)
        useSettingsPage();
    translateLabels();
    if (!source || !m_page->settings)
        return;
    source->Init();
    m_tree->fluxUnits.clear();
    m_tree->speedUnits.clear();
    source->GetFluxUnitData(m_tree->fluxUnits);
    source->GetSpeedUnitData(m_tree->speedUnits);
    m_page->dataLimitEnabled = isFunctionEnabled("DATAVOLUMELIMIT");
    m_page->timeLimitEnabled = isFunctionEnabled("TIMEVOLUMELIMIT");
    InitParam();
    // Emitted on the SDK's thread, so it arrives here queued.
    connect(
        source,
        SIGNAL(statisticsChanged(unsigned long, unsigned long, qulonglong, qulonglong, QString)),
        this,
        SLOT(onStatisticsChanged(unsigned long, unsigned long, qulonglong, qulonglong, QString)));
}

void CNetInfoUIService::useSettingsPage()
{
    NetInfoSettingUIPlugin *const page = NetInfoSettingUIPlugin::GetInstance();
    m_page->settings = page;
    if (page) {
        connect(page, SIGNAL(netInfoSettingsChanged(int, int, bool, bool)), this,
                SLOT(onNetInfoSettingsChanged(int, int, bool, bool)));
    }
}

bool CNetInfoUIService::ShowWindow(QWidget *parent, QRect &rect)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    if (m_page->operatorPage) {
        placePage(m_page->operatorPage, parent, rect, 0);
        initNRLNetInfoSettings();
        m_page->operatorPage->setVisible(true);
    }
    m_page->hostParent = parent;
    m_page->hostRect = rect;
    if (m_page->mainWidget) { // placed, but this build always presents the operator page
        placePage(m_page->mainWidget, parent, rect, 4);
        m_page->mainWidget->setVisible(false);
    }
    // The figures may bring a warning, which belongs to the window that the normal page is in.
    if (updateStoredStatistics())
        NETINFO_TRACE_CALL("%s: %s: Daily,Monthly ,yearly stats updated", kSource);
    else
        NETINFO_TRACE_CALL("%s: %s: Failed to get the Daily,Monthly ,yearly stats ", kSource);
    QTreeWidget *const tree = m_tree->tree;
    if (tree && m_page->source && (m_page->dataLimitEnabled || m_page->timeLimitEnabled)) {
        tree->setColumnWidth(0, m_tree->firstColumnWidth);
        tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        tree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }
    if (tree)
        tree->setFocus(Qt::OtherFocusReason);
    NETINFO_TRACE_CALL("%s: %s: Exit", kSource);
    return true;
}

int CNetInfoUIService::FitSize(QRect &rect)
{
    NETINFO_TRACE("%s: %s: %s: Entered", kSource);
    if (m_page->mainWidget && m_tree->tree) { // the operator page is laid out by ShowWindow alone
        m_page->mainWidget->resize(rect.width(), rect.height());
        m_page->mainWidget->move(rect.topLeft());
        applyColumnWidth();
        m_tree->tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_tree->tree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
    return 0;
}

void CNetInfoUIService::Hide()
{
    if (m_page->operatorPage)
        m_page->operatorPage->hide();
    if (m_page->mainWidget)
        m_page->mainWidget->hide();
}

int CNetInfoUIService::DoModal()
{
    return 0;
}

int CNetInfoUIService::Notify(unsigned int msg, unsigned int, unsigned int)
{
    NETINFO_TRACE("%s: %s: %s: called", kSource);
    if (msg == kLanguageChanged) {
        changeLanguage();
    } else if (msg == kStoredStatisticsChanged) {
        updateStoredStatistics();
        enableScroll();
    }
    return 0;
}

void CNetInfoUIService::changeLanguage()
{
    setNorellLanguage();
    translateLabels();
    updateStoredStatistics();
    updateStatisticsStrings();
    updateTransferStrings();
    updateDataVolumeStrings();
    updateRightClickItems();
    if (m_tree->items[NotesItem])
        m_tree->items[NotesItem]->setText(0, nodeText(NotesItem));
    if (m_page->settings)
        m_page->settings->SetLanguage();
    m_tree->firstColumnWidth = NetInfoRules::kFirstColumnWidth;
    enableScroll();
    if (m_tree->tree) {
        m_tree->tree->setAccessibleName(GetWindowTitle());
        applyColumnWidth();
    }
    if (m_page->graph)
        m_page->graph->update();
    if (m_page->content)
        m_page->content->repaint();
}

void CNetInfoUIService::applyColumnWidth()
{
    m_tree->tree->setColumnWidth(0, m_tree->firstColumnWidth);
    m_tree->tree->setMinimumWidth(1);
}

void CNetInfoUIService::OnDestroy()
{
    m_limits->prompt.reset();
    delete m_page->mainWidget;
    delete m_page->graph; // when the host has taken it out of the page
    NetInfoGraphConfigParse::OnDestroy();
    NetInfoSettingUIPlugin::ReleaseInstance();
    m_page->settings = nullptr;
    // The pages that no host window has taken would stay behind as windows of their own.
    delete m_page->operatorPage;
    delete m_page->content;
    NetInfoUILogic::Destroy();
}

void CNetInfoUIService::setSettingsPage(NetInfoSettingsPage *page)
{
    m_page->settings = page;
}

bool CNetInfoUIService::ShowSettingDialog(QWidget *parent, QRect &rect)
{
    if (m_page->settings) {
        m_page->settings->ShowNetInfoSettingDlg(parent, rect);
        m_page->settingsActive = true;
    }
    return true;
}

bool CNetInfoUIService::HideSetting()
{
    return m_page->settings ? m_page->settings->HideNetInfoSetting() : true;
}

bool CNetInfoUIService::IsActiveSetting()
{
    return m_page->settingsActive;
}

bool CNetInfoUIService::OnClickSettingOkButton()
{
    // Saving may show a message, in whose event loop the host may destroy the controller.
    const QPointer<CNetInfoUIService> self(this);
    const bool saved = !m_page->settings || m_page->settings->SaveNetInfoSettings();
    if (!self || !saved)
        return saved;
    m_page->settingsActive = false;
    if (m_page->settings)
        detach(m_page->settings->pageWidget());
    return true;
}

bool CNetInfoUIService::OnClickSettingCancelButton()
{
    if (m_page->settings) {
        m_page->settings->CancelNetInfoSetting();
        m_page->settingsActive = false;
        detach(m_page->settings->pageWidget());
    }
    return true;
}

QString CNetInfoUIService::GetModuleName()
{
    const bool hasLimits = m_page->dataLimitEnabled || m_page->timeLimitEnabled;
    if (!m_page->source || !hasLimits)
        return QLatin1String("");
    return tr(QLatin1String("IDS_SETTING_NAME"));
}

bool CNetInfoUIService::IsTopWindow()
{
    return true;
}

QString CNetInfoUIService::GetWindowTitle()
{
    return tr(QLatin1String("IDS_SETTING_NAME"));
}

void CNetInfoUIService::SwitchWindow() { }
