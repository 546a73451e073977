#include "UnitRules.h"

namespace UnitRules {

// rest * 100 needs up to 71 bits; doubles would already be wrong above 2^53.
__extension__ typedef unsigned __int128 UInt128;

quint64 factorOf(const TagUnits &unit)
{
    if (unit.value > 0)
        return quint64(unit.value);
    return unit.type > 0 ? unit.type : 1;
}

const TagUnits *unitFor(const QVector<TagUnits> &units, quint64 amount)
{
    const TagUnits *fitting = nullptr;
    const TagUnits *smallest = nullptr;
    quint64 fittingFactor = 0;
    quint64 smallestFactor = 0;
    for (const TagUnits &unit : units) {
        const quint64 factor = factorOf(unit);
        if (factor <= amount && factor > fittingFactor) {
            fitting = &unit;
            fittingFactor = factor;
        }
        if (!smallest || factor < smallestFactor) {
            smallest = &unit;
            smallestFactor = factor;
        }
    }
    return fitting ? fitting : smallest;
}

Scaled scale(quint64 amount, quint64 factor)
{
    const UInt128 rest = amount % factor;
    Scaled result;
    result.whole = amount / factor;
    result.hundredths = unsigned((rest * 200 + factor) / (UInt128(factor) * 2));
    if (result.hundredths == 100) { // cannot overflow: a rest means that the factor is above 1
        ++result.whole;
        result.hundredths = 0;
    }
    return result;
}

} // namespace UnitRules
