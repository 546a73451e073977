#include <host/ExtendDialog.h>

#include <QPointer>
#include <QVBoxLayout>

class ExtendDialogPrivate
{
public:
    QVBoxLayout *layout = nullptr; // the dialog's
    QPointer<QWidget> main; // may be taken away or deleted by its maker
};

ExtendDialog::ExtendDialog(QWidget *parent, Qt::WindowFlags flags, enWidgetType type)
    : QDialog(parent, flags)
    , d(new ExtendDialogPrivate)
{
    d->layout = new QVBoxLayout(this);
    if (type != WIDGET_TYPE_DIALOG)
        d->layout->setContentsMargins(0, 0, 0, 0);
}

ExtendDialog::~ExtendDialog()
{
    delete d;
}

void ExtendDialog::AddMainWidget(QWidget *widget)
{
    // The dialog itself and what holds it cannot be put into it.
    if (!widget || widget == d->main || widget == this || widget->isAncestorOf(this))
        return;
    if (d->main) { // stays the dialog's, but a frame shows one main widget
        d->layout->removeWidget(d->main);
        d->main->hide();
    }
    d->layout->addWidget(widget);
    d->main = widget;
}
