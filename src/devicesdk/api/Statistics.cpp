#include "api/Guard.h"

#include <host/velq.h>

using namespace velq;

static_assert(VELQ_STATISTICS_REPORT_SIZE == kReportSize, "the report's size is the contract's");

namespace {

bool isKind(int kind)
{
    constexpr int kLastKind = 5;
    return kind >= 0 && kind <= kLastKind;
}

} // namespace

int VELQ_Statistics_RegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback)
{
    if (!callback)
        return kFailure;
    return withService([callback](Service &service) {
        service.engine().callbacks().add(callback);
        return true;
    });
}

int VELQ_Statistics_UnRegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback)
{
    return guarded([callback] {
        const auto service = Runtime::runningService();
        return service && service->engine().callbacks().remove(callback);
    });
}

int VELQ_Statistics_GetReport(int kind, void *report, _VELQ_EN_CONNECT_TYPE type)
{
    if (!report || !isKind(kind) || !isConnectType(type))
        return kFailure;
    return withService([=](Service &service) {
        Report fields;
        if (!service.engine().report(kind, static_cast<int>(type), fields))
            return false;
        writeReport(fields, report);
        return true;
    });
}

int VELQ_Statistics_GetSpecHistroryData(void *report, unsigned long long key)
{
    if (!report)
        return kFailure;
    return withService([=](Service &service) {
        Report fields;
        if (!service.engine().history(key, fields))
            return false;
        writeReport(fields, report);
        return true;
    });
}

int VELQ_Statistics_Reset(_VELQ_EN_CONNECT_TYPE type)
{
    if (!isConnectType(type))
        return kFailure;
    return withService(
        [=](Service &service) { return service.engine().reset(static_cast<int>(type)); });
}
