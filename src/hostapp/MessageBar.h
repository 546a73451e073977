#pragma once

#include <QFrame>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
QT_END_NAMESPACE

//! A strip of messages that stops nobody: readable, selectable and dismissible. Hidden while empty.
class MessageBar : public QFrame
{
    Q_OBJECT
public:
    explicit MessageBar(QWidget *parent = nullptr);
    //! One message a line.
    void setMessages(const QStringList &messages);
    void retranslate();

private:
    QLabel *m_icon;
    QLabel *m_text;
    QPushButton *m_dismiss;
};
