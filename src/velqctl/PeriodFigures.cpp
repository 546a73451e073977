#include "PeriodFigures.h"

namespace velqctl {

namespace {

//! Little-endian whatever this computer is.
unsigned long long number(const unsigned char *at, int size)
{
    unsigned long long value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | at[i];
    return value;
}

} // namespace

ReportFields decodeReport(const unsigned char *report)
{
    ReportFields fields;
    fields.download = number(report + 524, 8);
    fields.upload = number(report + 532, 8);
    fields.seconds = static_cast<long long>(number(report + 556, 8));
    fields.lastReset = static_cast<long long>(number(report + 568, 4));
    return fields;
}

} // namespace velqctl
