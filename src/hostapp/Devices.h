#pragma once

#include <QList>
#include <QString>

#include <functional>

//! A device that can be counted.
struct HostDevice
{
    QString key; //!< what the SDK knows it by
    QString text; //!< for people: its name and interface
    bool present = false; //!< the computer has it now
    bool counted = false;
};

//! The devices that can be chosen, and the choice. Empty: what carries the traffic.
struct HostDevices
{
    QList<HostDevice> list;
    QString used;
};

//! Asks the SDK.
[[nodiscard]] HostDevices readDevices();
//! "Modem (operator), wwan0"; \a label alone when that is the interface's name.
[[nodiscard]] QString deviceText(const QString &label, const QString &interfaceName);
