#include "PagePlugin.h"

#include <QStringList>
#include <QVariant>

#ifndef PAGE_PLUGIN_CLSID
#define PAGE_PLUGIN_CLSID "TEST-PAGE"
#endif

static QString sizeText(const QRect &rect)
{
    return QStringLiteral("%1x%2").arg(rect.width()).arg(rect.height());
}

void PagePlugin::note(const QString &call)
{
    setProperty("calls", property("calls").toStringList() << call);
}

void PagePlugin::Release() { }

int PagePlugin::GetLastError()
{
    return 0;
}

void PagePlugin::OnDestroy()
{
    note(m_normalPage && m_normalPage->parentWidget() ? QStringLiteral("OnDestroy in the window")
                                                      : QStringLiteral("OnDestroy"));
    delete m_normalPage;
    delete m_operatorPage;
    delete m_settingsPage;
}

bool PagePlugin::Init()
{
    note(QStringLiteral("Init"));
#ifdef PAGE_PLUGIN_REFUSES
    return false;
#else
    return true;
#endif
}

int PagePlugin::GetPluginType()
{
    return 0;
}

QString PagePlugin::GetCLSID()
{
    return QStringLiteral(PAGE_PLUGIN_CLSID);
}

int PagePlugin::GetVersion()
{
    return 0;
}

QString PagePlugin::GetPluginName()
{
    return QStringLiteral("PagePlugin");
}

bool PagePlugin::IsAllowRelease()
{
    return false;
}

bool PagePlugin::QueryInterface(int id, QObject **out)
{
    note(QStringLiteral("QueryInterface %1").arg(id));
    if (id != 4098)
        return false;
    *out = this;
    return true;
}

bool PagePlugin::ShowWindow(QWidget *parent, QRect &rect)
{
    note(QStringLiteral("ShowWindow ") + sizeText(rect));
    if (!m_operatorPage) {
        m_operatorPage = new QWidget;
        m_operatorPage->setObjectName(QStringLiteral("NetInfoSettingDlg_MainWidget"));
    }
    m_hostParent = parent;
    m_hostArea = rect;
    m_operatorPage->setParent(parent);
    m_operatorPage->setGeometry(rect);
    m_operatorPage->show();
#ifndef PAGE_PLUGIN_WITHOUT_STATISTICS
    if (!m_normalPage)
        createNormalPage();
    m_normalPage->setParent(parent);
    m_normalPage->setGeometry(rect);
    m_normalPage->hide();
#endif
    return true;
}

int PagePlugin::DoModal()
{
    return 0;
}

void PagePlugin::Hide()
{
    note(QStringLiteral("Hide"));
    if (m_operatorPage)
        m_operatorPage->hide();
    if (m_normalPage)
        m_normalPage->hide();
}

int PagePlugin::FitSize(QRect &rect)
{
    note(QStringLiteral("FitSize ") + sizeText(rect));
    if (m_normalPage)
        m_normalPage->setGeometry(rect);
    return 0;
}

bool PagePlugin::IsReady()
{
    return true;
}

bool PagePlugin::ChangeLang(QString const &)
{
    return false;
}

int PagePlugin::Notify(unsigned int msg, unsigned int, unsigned int)
{
    note(QStringLiteral("Notify %1").arg(msg));
    return 0;
}
