#pragma once

#include <host/TagUnits.h>

#include <QVector>

//! Decisions of the unit formatters, over plain values.
namespace UnitRules {

//! An amount in hundredths of a unit, split so that no 64-bit amount overflows.
struct Scaled
{
    quint64 whole = 0;
    unsigned hundredths = 0; //!< 0 to 99
};

//! The factor of \a unit, never 0: `value`, else `type`, else 1.
[[nodiscard]] quint64 factorOf(const TagUnits &unit);

//! The row of the largest factor that is not above \a amount, whatever the order of the table;
//! below every factor the row of the smallest one; of equal rows the first. Null for an empty
//! table.
[[nodiscard]] const TagUnits *unitFor(const QVector<TagUnits> &units, quint64 amount);

//! \a amount / \a factor, rounded to the nearest hundredth, half up. \a factor is not 0.
[[nodiscard]] Scaled scale(quint64 amount, quint64 factor);

} // namespace UnitRules
