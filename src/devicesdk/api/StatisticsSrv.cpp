#include "api/Guard.h"
#include "api/Lists.h"

#include <host/velq_extension.h>

using namespace velq;

static_assert(VELQ_REASON_RECOVERED == int(ReasonKind::Recovered)
                  && VELQ_REASON_COUNTER_FELL == int(ReasonKind::CounterFell)
                  && VELQ_REASON_CLOCK_STEPPED == int(ReasonKind::ClockStepped)
                  && VELQ_REASON_CORRECTED == int(ReasonKind::Corrected)
                  && VELQ_REASON_RESET == int(ReasonKind::Reset)
                  && VELQ_REASON_SET_ASIDE == int(ReasonKind::SetAside),
              "the kinds are the contract's");

namespace {

VELQ_Usage usageOf(std::int64_t start, Day day, const std::string &device, int use,
                   const Amounts &amounts)
{
    VELQ_Usage usage {};
    usage.start = start;
    usage.day = day;
    usage.connectType = typeOfUse(use);
    usage.roaming = isRoaming(use) ? 1 : 0;
    writeText(usage.device, device);
    usage.download = amounts.download;
    usage.upload = amounts.upload;
    usage.timeMs = amounts.timeMs;
    return usage;
}

VELQ_Reason reasonOf(const Reason &from)
{
    VELQ_Reason reason {};
    reason.kind = static_cast<int>(from.kind);
    reason.connectType = typeOfUse(from.use);
    reason.at = from.at;
    writeText(reason.device, from.device);
    reason.download = from.download;
    reason.upload = from.upload;
    reason.seconds = from.seconds;
    return reason;
}

} // namespace

int VELQ_StatisticsSrv_SetPeriodStart(int weekday, int dayOfMonth)
{
    const PeriodStart start { weekday, dayOfMonth };
    return guarded([&start] { return isValid(start) && Runtime::setPeriodStart(start); });
}

int VELQ_StatisticsSrv_GetHours(long long from, long long to, VELQ_Usage **list, int *count)
{
    if (!list || !count)
        return kFailure;
    return withService([=](Service &service) {
        HourAmounts hours;
        if (!service.engine().ledger().hours({ from, to }, hours))
            return false;
        std::vector<VELQ_Usage> rows;
        for (const auto &[key, amounts] : hours)
            rows.push_back(usageOf(key.start, key.day, key.device, key.use, amounts));
        giveList(rows, list, count);
        return true;
    });
}

int VELQ_StatisticsSrv_GetDays(int from, int to, VELQ_Usage **list, int *count)
{
    if (!list || !count)
        return kFailure;
    return withService([=](Service &service) {
        DayAmounts days;
        if (!service.engine().ledger().days({ from, to }, days))
            return false;
        std::vector<VELQ_Usage> rows;
        for (const auto &[key, amounts] : days)
            rows.push_back(usageOf(-1, key.day, key.device, key.use, amounts));
        giveList(rows, list, count);
        return true;
    });
}

int VELQ_StatisticsSrv_ReleaseUsage(VELQ_Usage *list)
{
    delete[] list;
    return kSuccess;
}

int VELQ_StatisticsSrv_GetPeriod(int kind, int *from, int *to)
{
    if (!from || !to)
        return kFailure;
    return withService([=](Service &service) {
        const DaySpan days = service.engine().periodOf(kind);
        if (days.from == days.to)
            return false;
        *from = days.from;
        *to = days.to;
        return true;
    });
}

int VELQ_StatisticsSrv_Correct(int kind, _VELQ_EN_CONNECT_TYPE type, unsigned long long download,
                               unsigned long long upload)
{
    constexpr unsigned long long kMost = 1ULL << 62;
    if (!isConnectType(type) || download > kMost || upload > kMost)
        return kFailure;
    return withService([=](Service &service) {
        return service.engine().correct(kind, static_cast<int>(type),
                                        static_cast<std::int64_t>(download),
                                        static_cast<std::int64_t>(upload));
    });
}

int VELQ_StatisticsSrv_GetReasons(int most, VELQ_Reason **list, int *count)
{
    if (most < 0 || !list || !count)
        return kFailure;
    return withService([=](Service &service) {
        std::vector<Reason> reasons;
        if (!service.engine().ledger().reasons(most, reasons))
            return false;
        std::vector<VELQ_Reason> rows;
        for (const Reason &reason : reasons)
            rows.push_back(reasonOf(reason));
        giveList(rows, list, count);
        return true;
    });
}

int VELQ_StatisticsSrv_ReleaseReasons(VELQ_Reason *list)
{
    delete[] list;
    return kSuccess;
}
