// The host's dialog frame and line edit, as plain as can be.

#include <QVBoxLayout>

#include <host/ExtendDialog.h>
#include <host/ExtendLineEdit.h>

#include "FakeHost.h"

ExtendDialog::ExtendDialog(QWidget *parent, Qt::WindowFlags flags, enWidgetType type)
    : QDialog(parent, flags)
    , d(nullptr)
{
    fakeHost().dialogTypes << type;
    fakeHost().dialogFlags << flags;
    new QVBoxLayout(this);
}

ExtendDialog::~ExtendDialog() = default;

void ExtendDialog::AddMainWidget(QWidget *widget)
{
    layout()->addWidget(widget);
}

ExtendLineEdit::ExtendLineEdit(QWidget *parent)
    : QLineEdit(parent)
    , d(nullptr)
{
}

ExtendLineEdit::~ExtendLineEdit() = default;
