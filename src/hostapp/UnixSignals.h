#pragma once

#include <QObject>

QT_BEGIN_NAMESPACE
class QSocketNotifier;
QT_END_NAMESPACE

//! Turns SIGINT, SIGTERM and SIGHUP into a Qt signal, so that the program ends in good order. One
//! object per process; destroying it gives the signals their default action back.
class UnixSignals : public QObject
{
    Q_OBJECT
public:
    explicit UnixSignals(QObject *parent = nullptr);
    ~UnixSignals() override;

signals:
    void endRequested();

private:
    QSocketNotifier *m_notifier = nullptr;
};
