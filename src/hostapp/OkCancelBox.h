#pragma once

#include <QDialogButtonBox>

//! OK and Cancel in the program's own language and with its own mnemonics. Enter presses the one
//! with the focus.
class OkCancelBox : public QDialogButtonBox
{
    Q_OBJECT
public:
    explicit OkCancelBox(QWidget *parent = nullptr);
    void retranslate();
    //! Has Tab go from the last control of \a page to OK, then to Cancel.
    void followInTabOrder(QWidget *page);

protected:
    void changeEvent(QEvent *event) override;

private:
    QPushButton *m_ok;
    QPushButton *m_cancel;
};

//! The first control of \a page that Tab reaches, or null.
[[nodiscard]] QWidget *firstTabStop(const QWidget *page);
