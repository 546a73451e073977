#pragma once
// The plug-in's entry object: what the host sees. It forwards to the main view's controller.

#include <QObject>

#include <host/INotify.h>
#include <host/IUIPlugin.h>

#include "QtCompat.h"

class CNetInfoUIService;

//! One per process, made by qt_plugin_instance(). Operations without a controller (after OnDestroy)
//! answer false, 0 or -1 as their interfaces say. GUI thread only.
class CNetInfoUIPlugin : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    NETINFO_PLUGIN_METADATA("com.valtrix.skylet.plugin.IUIPlugin")
    Q_INTERFACES(IUIPlugin : IBasePlugin INotify)
public:
    CNetInfoUIPlugin();

    void Release() override;
    int GetLastError() override;
    void OnDestroy() override;

    bool Init() override;
    int GetPluginType() override;
    QString GetCLSID() override;
    int GetVersion() override;
    QString GetPluginName() override;
    bool IsAllowRelease() override;
    //! 4098 and 38183 give the controller, which is made anew when it was destroyed.
    bool QueryInterface(int id, QObject **out) override;

    bool ShowWindow(QWidget *parent, QRect &rect) override;
    int DoModal() override;
    void Hide() override;
    int FitSize(QRect &rect) override;
    bool IsReady() override;
    bool ChangeLang(QString const &language) override;

    int Notify(unsigned int msg, unsigned int wparam, unsigned int lparam) override;

private:
    CNetInfoUIService *m_service; // not owned: lives until the host's destroy call
};
