// The settings page, and the button on the normal page that leads to it.
#include "PagePlugin.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QSize>
#include <QVariant>
#include <QVBoxLayout>

void PagePlugin::createNormalPage()
{
    m_normalPage = new QWidget;
    m_normalPage->setObjectName(QStringLiteral("NetInfoUIPlugin_WidgetParent"));
    auto *setLimit = new QPushButton(QStringLiteral("Set limit"), m_normalPage);
    setLimit->setObjectName(QStringLiteral("Test_SetLimit"));
    connect(setLimit, &QPushButton::clicked, this, [this] {
        QRect area = m_hostArea;
        ShowSettingDialog(m_hostParent, area);
    });
}

void PagePlugin::createSettingsPage()
{
    m_settingsPage = new QWidget;
    m_settingsPage->setObjectName(QStringLiteral("Test_Settings"));
    auto *layout = new QVBoxLayout(m_settingsPage);
    m_first = new QLineEdit(m_settingsPage);
    m_first->setObjectName(QStringLiteral("Test_First"));
    m_first->setText(property("saved").toString());
    auto *last = new QLineEdit(m_settingsPage);
    last->setObjectName(QStringLiteral("Test_Last"));
    layout->addWidget(m_first);
    layout->addStretch();
    layout->addWidget(last);
    if (property("pageSize").isValid())
        m_settingsPage->setMinimumSize(property("pageSize").toSize());
}

bool PagePlugin::ShowSettingDialog(QWidget *parent, QRect &rect)
{
    note(QStringLiteral("ShowSettingDialog"));
    if (!m_settingsPage)
        createSettingsPage();
    m_settingsPage->setParent(parent);
    m_settingsPage->setGeometry(rect);
    m_settingsPage->show();
    m_settingsActive = true;
    return true;
}

bool PagePlugin::OnClickSettingOkButton()
{
    note(QStringLiteral("OK"));
    if (property("runsEvents").toBool())
        QCoreApplication::processEvents();
    if (property("refuses").toBool())
        return false;
    if (m_first)
        setProperty("saved", m_first->text());
    detachSettingsPage();
    return true;
}

bool PagePlugin::OnClickSettingCancelButton()
{
    note(QStringLiteral("Cancel"));
    if (m_first)
        m_first->setText(property("saved").toString());
    detachSettingsPage();
    return true;
}

void PagePlugin::detachSettingsPage()
{
    m_settingsActive = false;
    if (m_settingsPage)
        m_settingsPage->setParent(nullptr);
}

QString PagePlugin::GetModuleName()
{
    return property("moduleName").toString();
}

bool PagePlugin::HideSetting()
{
    if (m_settingsPage)
        m_settingsPage->hide();
    return true;
}

bool PagePlugin::IsActiveSetting()
{
    return m_settingsActive;
}
