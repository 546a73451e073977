#include "SettingModule.h"

#include <host/ISettingUIPlugin.h>

#include <QWidget>

#include <algorithm>
#include <iterator>

SettingModule::SettingModule(QObject *controller)
    : m_controller(controller)
{
}

ISettingUIPlugin *SettingModule::page() const
{
    return qobject_cast<ISettingUIPlugin *>(m_controller.data());
}

QString SettingModule::name() const
{
    return page() ? page()->GetModuleName() : QString();
}

bool SettingModule::isActive() const
{
    return page() && page()->IsActiveSetting();
}

void SettingModule::show(QWidget *parent) const
{
    QRect area = parent->rect();
    if (page())
        page()->ShowSettingDialog(parent, area);
}

bool SettingModule::save() const
{
    return !page() || page()->OnClickSettingOkButton();
}

void SettingModule::cancel() const
{
    if (page())
        page()->OnClickSettingCancelButton();
}

SettingModules namedModules(const SettingModules &modules)
{
    SettingModules named;
    std::copy_if(modules.begin(), modules.end(), std::back_inserter(named),
                 [](const SettingModule &module) { return !module.name().isEmpty(); });
    return named;
}
