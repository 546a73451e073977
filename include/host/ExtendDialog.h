#ifndef HOST_EXTENDDIALOG_H
#define HOST_EXTENDDIALOG_H

#include <QDialog>

#include "HostCoreExport.h"

//! The look of a host dialog.
enum enWidgetType : int {
    WIDGET_TYPE_DEFAULT = 0, //!< a plain window
    WIDGET_TYPE_DIALOG = 1 //!< a dialog with the host's margins
};

class ExtendDialogPrivate;

//! The host's dialog frame. GUI thread. Owned by its parent or its creator, like any widget.
class HOST_CORE_EXPORT ExtendDialog : public QDialog
{
    Q_OBJECT
public:
    ExtendDialog(QWidget *parent, Qt::WindowFlags flags, enWidgetType type);
    ~ExtendDialog() override;
    //! Puts \a widget into the frame and takes ownership of it. A null widget changes nothing.
    void AddMainWidget(QWidget *widget);

private:
    Q_DISABLE_COPY(ExtendDialog)
    ExtendDialogPrivate *d;
};

#endif // HOST_EXTENDDIALOG_H
