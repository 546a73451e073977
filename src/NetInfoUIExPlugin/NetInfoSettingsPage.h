#pragma once
// What the controller needs of its settings page.

QT_BEGIN_NAMESPACE
class QRect;
class QWidget;
QT_END_NAMESPACE

//! The page in the host's settings dialog. GUI thread only.
class NetInfoSettingsPage
{
public:
    virtual ~NetInfoSettingsPage() { }
    //! Shows the page in \a rect of \a parent.
    virtual void ShowNetInfoSettingDlg(QWidget *parent, QRect &rect) = 0;
    //! Hides the page. True when it is hidden.
    virtual bool HideNetInfoSetting() = 0;
    //! Validates and saves. False: the user has been told why not.
    virtual bool SaveNetInfoSettings() = 0;
    //! Throws the changes away.
    virtual void CancelNetInfoSetting() = 0;
    //! Translates the page again.
    virtual void SetLanguage() = 0;
    //! The page itself, or null when it is not built or died with its parent.
    virtual QWidget *pageWidget() const = 0;
};
