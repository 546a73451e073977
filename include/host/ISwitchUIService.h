#ifndef HOST_ISWITCHUISERVICE_H
#define HOST_ISWITCHUISERVICE_H

#include <QObject>
#include <QString>

//! Lets the host switch between windows of plug-ins. Called by table: the order is fixed. GUI
//! thread only.
class ISwitchUIService
{
public:
    virtual ~ISwitchUIService() { }
    //! Whether the plug-in's page is a window of the first rank.
    virtual bool IsTopWindow() = 0;
    //! The translated title of the page.
    virtual QString GetWindowTitle() = 0;
    //! Brings the page to the front.
    virtual void SwitchWindow() = 0;
};

Q_DECLARE_INTERFACE(ISwitchUIService, "com.valtrix.skylet.plugin.ISwitchUIService")

#endif // HOST_ISWITCHUISERVICE_H
