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
    QString interfaceName; //!< the latest one
};

//! The devices that can be chosen, those that are present first, and the choice.
struct HostDevices
{
    QList<HostDevice> list;
    QString used; //!< a key or an interface's name; empty: what carries the traffic
};

//! Asks the SDK.
[[nodiscard]] HostDevices readDevices();
//! The key of the used device, however that is named; what names it when no device of the list
//! does.
[[nodiscard]] QString usedKey(const HostDevices &devices);
//! "Modem (operator), wwan0"; \a label alone when that is the interface's name.
[[nodiscard]] QString deviceText(const QString &label, const QString &interfaceName);
