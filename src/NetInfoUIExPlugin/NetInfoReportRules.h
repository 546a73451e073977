#pragma once
// The device SDK's blocks of bytes as values. Offsets are the SDK's; fields are little-endian and
// not aligned.

#include <QtGlobal>

//! What a statistics report says: bytes, bytes per second, seconds.
struct NetInfoReport
{
    quint64 downloadData = 0;
    quint64 uploadData = 0;
    quint32 downloadSpeed = 0;
    quint32 uploadSpeed = 0;
    qint64 connectionTime = 0;
    quint32 lastReset = 0; //!< seconds since 1970-01-01 UTC
};

//! What comes with a statistics event.
struct NetInfoNotice
{
    bool connected = false;
    qint32 connectType = 0;
};

namespace NetInfoRules {

//! Reads the report \a block of 576 bytes.
[[nodiscard]] NetInfoReport decodeReport(const void *block);

//! Reads the eight bytes of an event's data.
[[nodiscard]] NetInfoNotice decodeNotice(const void *data);

//! The SDK's report kind for selector \a type of the stored statistics: 0 to 3 give 1 (daily),
//! 3 (weekly), 4 (monthly), 5 (yearly); any other gives 1.
[[nodiscard]] int reportKind(int type);

} // namespace NetInfoRules
