#pragma once

#include "LiveFeed.h"

#include <QStatusBar>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

//! The line at the window's foot: interface, connection, what is wrong with the store.
class StatusLine : public QStatusBar
{
    Q_OBJECT
public:
    explicit StatusLine(QWidget *parent = nullptr);
    void setDemo(bool demo);
    void setSample(const LiveSample &sample);
    void setStoreProblem(const QString &problem);
    void retranslate();

private:
    void refresh();

    QLabel *m_interface;
    QLabel *m_connection;
    QLabel *m_store;
    bool m_demo = false;
    LiveSample m_sample;
};
