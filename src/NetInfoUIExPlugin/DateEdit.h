#pragma once
// The start date's editor.

#include <QDateEdit>

//! A date that is chosen in the calendar alone: keys are left to the parent.
class DateEdit : public QDateEdit
{
    Q_OBJECT
public:
    explicit DateEdit(QWidget *parent = nullptr);
    ~DateEdit() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
};
