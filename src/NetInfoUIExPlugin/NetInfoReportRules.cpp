#include "NetInfoReportRules.h"

#include <QtEndian>

#include <cstring>

namespace {

constexpr int kDownloadDataOffset = 524;
constexpr int kUploadDataOffset = 532;
constexpr int kDownloadSpeedOffset = 540;
constexpr int kUploadSpeedOffset = 544;
constexpr int kConnectionTimeOffset = 556;
constexpr int kLastResetOffset = 568;
constexpr int kNoticeTypeOffset = 4;

template <typename Number>
Number numberAt(const void *block, int offset)
{
    Number raw;
    std::memcpy(&raw, static_cast<const char *>(block) + offset, sizeof raw);
    return qFromLittleEndian(raw);
}

} // namespace

namespace NetInfoRules {

NetInfoReport decodeReport(const void *block)
{
    NetInfoReport report;
    report.downloadData = numberAt<quint64>(block, kDownloadDataOffset);
    report.uploadData = numberAt<quint64>(block, kUploadDataOffset);
    report.downloadSpeed = numberAt<quint32>(block, kDownloadSpeedOffset);
    report.uploadSpeed = numberAt<quint32>(block, kUploadSpeedOffset);
    report.connectionTime = numberAt<qint64>(block, kConnectionTimeOffset);
    report.lastReset = numberAt<quint32>(block, kLastResetOffset);
    return report;
}

NetInfoNotice decodeNotice(const void *data)
{
    NetInfoNotice notice;
    notice.connected = *static_cast<const unsigned char *>(data) != 0;
    notice.connectType = numberAt<qint32>(data, kNoticeTypeOffset);
    return notice;
}

int reportKind(int type)
{
    constexpr int kinds[] = { 1, 3, 4, 5 };
    const bool known = type >= 0 && type < int(sizeof kinds / sizeof kinds[0]);
    return known ? kinds[type] : kinds[0];
}

} // namespace NetInfoRules
