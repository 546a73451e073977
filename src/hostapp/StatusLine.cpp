#include "StatusLine.h"

#include "HostTexts.h"

#include <QLabel>

StatusLine::StatusLine(QWidget *parent)
    : QStatusBar(parent)
    , m_interface(new QLabel(this))
    , m_connection(new QLabel(this))
    , m_store(new QLabel(this))
{
    m_interface->setObjectName(QStringLiteral("Host_StatusInterface"));
    m_connection->setObjectName(QStringLiteral("Host_StatusConnection"));
    m_store->setObjectName(QStringLiteral("Host_StatusStore"));
    for (QLabel *label : { m_interface, m_connection, m_store })
        label->setTextFormat(Qt::PlainText);
    setContentsMargins(6, 0, 6, 0);
    addWidget(m_interface);
    addWidget(m_connection);
    addWidget(m_store, 1);
    m_store->setMinimumWidth(1); // a long problem must not widen the window; the tip has it in full
    m_store->hide();
    retranslate();
}

void StatusLine::setDemo(bool demo)
{
    m_demo = demo;
    refresh();
}

void StatusLine::setSample(const LiveSample &sample)
{
    m_sample = sample;
    refresh();
}

void StatusLine::setStoreProblem(const QString &problem)
{
    m_store->setText(problem);
    m_store->setToolTip(problem);
    m_store->setVisible(!problem.isEmpty());
}

void StatusLine::retranslate()
{
    m_interface->setAccessibleName(hostText("HOST_INTERFACE"));
    m_connection->setAccessibleName(hostText("HOST_CONNECTION"));
    m_store->setAccessibleName(hostText("HOST_STORE"));
    refresh();
}

void StatusLine::refresh()
{
    const bool hasInterface = !m_sample.interfaceName.isEmpty();
    m_interface->setText(hasInterface ? m_sample.interfaceName : hostText("HOST_NO_INTERFACE"));
    const QString state = hostText(m_sample.connected ? "HOST_CONNECTED" : "HOST_NOT_CONNECTED");
    m_connection->setText(m_demo ? hostText("HOST_DEMO") + QStringLiteral(u" \u00b7 ") + state
                                 : state);
}
