#pragma once

#include <host/INotify.h>
#include <host/IUIPlugin.h>

#include <QPointer>
#include <QRect>
#include <QWidget>

//! A page plug-in that does what it is told and writes it down in its property "calls".
class PagePlugin : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.valtrix.skylet.plugin.IUIPlugin")
    Q_INTERFACES(IUIPlugin IBasePlugin INotify)
public:
    void Release() override;
    int GetLastError() override;
    void OnDestroy() override;
    bool Init() override;
    int GetPluginType() override;
    QString GetCLSID() override;
    int GetVersion() override;
    QString GetPluginName() override;
    bool IsAllowRelease() override;
    bool QueryInterface(int id, QObject **out) override;
    bool ShowWindow(QWidget *parent, QRect &rect) override;
    int DoModal() override;
    void Hide() override;
    int FitSize(QRect &rect) override;
    bool IsReady() override;
    bool ChangeLang(QString const &language) override;
    int Notify(unsigned int msg, unsigned int wparam, unsigned int lparam) override;

private:
    void note(const QString &call);

    QPointer<QWidget> m_operatorPage;
    QPointer<QWidget> m_normalPage;
};
