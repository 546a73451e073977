#include <host/ExtendLineEdit.h>

// d keeps the size of the class when the line edit gets data of its own; there is none yet.
ExtendLineEdit::ExtendLineEdit(QWidget *parent)
    : QLineEdit(parent)
    , d(nullptr)
{
}

ExtendLineEdit::~ExtendLineEdit() = default;
