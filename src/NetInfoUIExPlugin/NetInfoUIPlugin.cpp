#include "NetInfoUIPlugin.h"

#include "NetInfoLog.h"
#include "NetInfoUIService.h"

namespace {

constexpr char kSource[] = "../../src/NetInfoUIExPlugin/NetInfoUIPlugin.cpp";

constexpr int kSettingRequest = 0x1002;
constexpr int kSwitchRequest = 0x9527;

} // namespace

NETINFO_EXPORT_PLUGIN(NetInfoUIExPlugin, CNetInfoUIPlugin)

CNetInfoUIPlugin::CNetInfoUIPlugin()
    : m_service(nullptr)
{
    NETINFO_TRACE_CALL("%s: %s called", kSource);
    m_service = CNetInfoUIService::instance();
}

void CNetInfoUIPlugin::Release() { }

int CNetInfoUIPlugin::GetLastError()
{
    return 0;
}

void CNetInfoUIPlugin::OnDestroy()
{
    m_service = nullptr; // first: the host may call while its pages go
    CNetInfoUIService::Destroy();
}

bool CNetInfoUIPlugin::Init()
{
    return m_service ? m_service->Init() : false;
}

int CNetInfoUIPlugin::GetPluginType()
{
    return 0;
}

QString CNetInfoUIPlugin::GetCLSID()
{
    return QString();
}

int CNetInfoUIPlugin::GetVersion()
{
    return 0;
}

QString CNetInfoUIPlugin::GetPluginName()
{
    return QLatin1String("NetInfoUIPlugin");
}

bool CNetInfoUIPlugin::IsAllowRelease()
{
    return false;
}

bool CNetInfoUIPlugin::QueryInterface(int id, QObject **out)
{
    NETINFO_TRACE_CALL("%s: %s called", kSource);
    if (id != kSettingRequest && id != kSwitchRequest)
        return false;
    m_service = CNetInfoUIService::instance();
    if (out)
        *out = m_service;
    return true;
}

bool CNetInfoUIPlugin::ShowWindow(QWidget *parent, QRect &rect)
{
    return m_service ? m_service->ShowWindow(parent, rect) : false;
}

int CNetInfoUIPlugin::DoModal()
{
    return m_service ? m_service->DoModal() : -1;
}

void CNetInfoUIPlugin::Hide()
{
    if (m_service)
        m_service->Hide();
}

int CNetInfoUIPlugin::FitSize(QRect &rect)
{
    return m_service ? m_service->FitSize(rect) : 0;
}

bool CNetInfoUIPlugin::IsReady()
{
    return true;
}

bool CNetInfoUIPlugin::ChangeLang(QString const &)
{
    return false;
}

int CNetInfoUIPlugin::Notify(unsigned int msg, unsigned int wparam, unsigned int lparam)
{
    return m_service ? m_service->Notify(msg, wparam, lparam) : -1;
}
