#ifndef HOST_TAGUNITS_H
#define HOST_TAGUNITS_H

#include <QString>
#include <QtGlobal>

//! One row of a unit table. A table is a QVector<TagUnits>, smallest unit first.
struct TagUnits
{
    QString name; //!< the unit's key, not shown
    qint32 value; //!< the unit's factor, in bytes (or bytes per second)
    quint64 type; //!< the same factor with 64 bits, for units that 32 bits cannot hold
    QString langResID; //!< text identifier of the unit's name
};

#endif // HOST_TAGUNITS_H
