#pragma once
// Reads the fields of a statistics report as a user of the SDK does.

#include <host/velq.h>

#include <QByteArray>
#include <QtGlobal>

#include <cstring>

struct SdkReport
{
    int result = -1;
    QByteArray bytes = QByteArray(VELQ_STATISTICS_REPORT_SIZE, '\x5c');

    [[nodiscard]] quint64 download() const
    {
        return field<quint64>(524);
    }
    [[nodiscard]] quint64 upload() const
    {
        return field<quint64>(532);
    }
    [[nodiscard]] quint32 downloadSpeed() const
    {
        return field<quint32>(540);
    }
    [[nodiscard]] quint32 uploadSpeed() const
    {
        return field<quint32>(544);
    }
    [[nodiscard]] qint64 seconds() const
    {
        return field<qint64>(556);
    }
    [[nodiscard]] quint32 lastReset() const
    {
        return field<quint32>(568);
    }
    [[nodiscard]] bool isUntouched() const
    {
        return bytes == QByteArray(VELQ_STATISTICS_REPORT_SIZE, '\x5c');
    }

private:
    template <typename T>
    [[nodiscard]] T field(int offset) const
    {
        T value {};
        std::memcpy(&value, bytes.constData() + offset, sizeof value);
        return value;
    }
};

inline SdkReport sdkReport(int kind, int type = 0)
{
    SdkReport report;
    report.result = VELQ_Statistics_GetReport(kind, report.bytes.data(),
                                              static_cast<_VELQ_EN_CONNECT_TYPE>(type));
    return report;
}

inline SdkReport sdkHistory(unsigned long long key)
{
    SdkReport report;
    report.result = VELQ_Statistics_GetSpecHistroryData(report.bytes.data(), key);
    return report;
}
