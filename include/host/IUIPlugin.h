#ifndef HOST_IUIPLUGIN_H
#define HOST_IUIPLUGIN_H

#include "IBasePlugin.h"

QT_BEGIN_NAMESPACE
class QRect;
class QWidget;
QT_END_NAMESPACE

//! A plug-in with a page in the host window. Called by table: the order is fixed. GUI thread only.
class IUIPlugin : public IBasePlugin
{
public:
    //! Places the page into \a rect of \a parent (pixels, inclusive corners) and shows it. \a
    //! parent becomes the Qt parent of the pages and may be destroyed at any time. False: nothing
    //! is shown.
    virtual bool ShowWindow(QWidget *parent, QRect &rect) = 0;
    //! Runs the plug-in as a dialog: its result, 0 when it has no dialog, -1 when it cannot.
    virtual int DoModal() = 0;
    //! Hides every page.
    virtual void Hide() = 0;
    //! Fits the page to \a rect of its parent. The result is not used; 0.
    virtual int FitSize(QRect &rect) = 0;
    //! Whether the plug-in can be shown.
    virtual bool IsReady() = 0;
    //! Not used for language changes, which come through INotify: false.
    virtual bool ChangeLang(QString const &language) = 0;
};

Q_DECLARE_INTERFACE(IUIPlugin, "com.valtrix.skylet.plugin.IUIPlugin")

#endif // HOST_IUIPLUGIN_H
