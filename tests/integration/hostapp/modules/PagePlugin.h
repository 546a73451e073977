#pragma once

#include <host/INotify.h>
#include <host/ISettingUIPlugin.h>
#include <host/IUIPlugin.h>

#include <QLineEdit>
#include <QPointer>
#include <QRect>
#include <QWidget>

//! A page plug-in that does what it is told and writes it down in its property "calls". What it is
//! told: "moduleName", the entry of its settings; "refuses", saving fails; "runsEvents", an event
//! loop runs while it saves; "pageSize", the least size of its settings page. "saved" is what was
//! saved last.
class PagePlugin : public QObject, public IUIPlugin, public INotify, public ISettingUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.valtrix.skylet.plugin.IUIPlugin")
    Q_INTERFACES(IUIPlugin IBasePlugin INotify ISettingUIPlugin)
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
    bool OnClickSettingOkButton() override;
    bool OnClickSettingCancelButton() override;
    bool ShowSettingDialog(QWidget *parent, QRect &rect) override;
    QString GetModuleName() override;
    bool HideSetting() override;
    bool IsActiveSetting() override;

private:
    void note(const QString &call);
    void createNormalPage();
    void createSettingsPage();
    void detachSettingsPage();

    QPointer<QWidget> m_hostParent; // of the last ShowWindow, as the area below
    QRect m_hostArea;
    bool m_settingsActive = false;
    QPointer<QWidget> m_settingsPage;
    QPointer<QLineEdit> m_first;
    QPointer<QWidget> m_operatorPage;
    QPointer<QWidget> m_normalPage;
};
