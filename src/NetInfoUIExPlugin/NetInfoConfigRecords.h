#pragma once
// Items of the module configuration.

#include <QString>

//! One item of a switch, unit or format section.
struct NetInfoConfig
{
    QString section; //!< "function", "fluxunit", "speedunit" or "format"; empty before any section
    QString name; //!< the item's key
    QString value; //!< "true" switches a function on; a unit's factor in base 10
    QString type; //!< a unit's factor in base 10, up to 64 bits
    QString langResID; //!< text identifier of the item's name
    QString module; //!< the module that held the item
};

//! One item of a "Limit" section.
struct NetInfoLimitCfg
{
    QString section; //!< always "Limit"
    QString name;
    QString value;
    QString value1;
};
