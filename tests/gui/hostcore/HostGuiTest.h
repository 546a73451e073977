#pragma once
// What the tests of the host's widgets share: a message handler and a look at what stays behind.

#include <QObject>
#include <QScopedPointer>

#include "TestLog.h"

class HostGuiTest : public QObject
{
    Q_OBJECT
protected:
    QScopedPointer<TestLog> m_log;

private slots:
    void init();
    void cleanup();
};
