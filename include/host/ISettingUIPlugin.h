#ifndef HOST_ISETTINGUIPLUGIN_H
#define HOST_ISETTINGUIPLUGIN_H

#include <QObject>
#include <QString>

QT_BEGIN_NAMESPACE
class QRect;
class QWidget;
QT_END_NAMESPACE

//! A plug-in's page in the host's settings dialog. Called by table: the order is fixed. GUI thread
//! only.
class ISettingUIPlugin
{
public:
    virtual ~ISettingUIPlugin() { }
    //! Saves the page. False keeps the dialog open: the page has told the user why.
    virtual bool OnClickSettingOkButton() = 0;
    //! Throws the changes away. True.
    virtual bool OnClickSettingCancelButton() = 0;
    //! Shows the page in \a rect of \a parent (pixels). True.
    virtual bool ShowSettingDialog(QWidget *parent, QRect &rect) = 0;
    //! The translated name of the dialog's entry; empty when there is nothing to set.
    virtual QString GetModuleName() = 0;
    //! Hides the page. True when it is hidden.
    virtual bool HideSetting() = 0;
    //! Whether the page is being shown and neither saved nor cancelled yet.
    virtual bool IsActiveSetting() = 0;
};

Q_DECLARE_INTERFACE(ISettingUIPlugin, "com.valtrix.skylet.plugin.ISettingUIPlugin")

#endif // HOST_ISETTINGUIPLUGIN_H
