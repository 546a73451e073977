#pragma once

#include <QFrame>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
QT_END_NAMESPACE

//! One thing that has just happened.
struct Notice
{
    const char *key = nullptr; //!< of its text; null: nothing
    bool isWarning = false;
};

//! A strip of messages that stops nobody: readable, selectable and dismissible. Hidden while
//! empty.
class MessageBar : public QFrame
{
    Q_OBJECT
public:
    explicit MessageBar(QWidget *parent = nullptr);
    //! One message a line.
    void setMessages(const QStringList &messages);
    //! Adds \a notice below the messages, in the place of the one before.
    void setNotice(const Notice &notice);
    void retranslate();

private:
    void dismiss();
    void refresh();

    QStringList m_messages;
    Notice m_notice;
    QLabel *m_icon;
    QLabel *m_text;
    QPushButton *m_dismiss;
};
