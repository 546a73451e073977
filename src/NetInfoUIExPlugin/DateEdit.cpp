#include "DateEdit.h"

#include <QKeyEvent>

DateEdit::DateEdit(QWidget *parent)
    : QDateEdit(parent)
{
}

DateEdit::~DateEdit() = default;

void DateEdit::keyPressEvent(QKeyEvent *event)
{
    if (event)
        event->ignore();
}

void DateEdit::keyReleaseEvent(QKeyEvent *event)
{
    if (event)
        event->ignore();
}
