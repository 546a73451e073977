#include "Sdk.h"

#include "Words.h"

#include <climits>
#include <cstdlib>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

namespace velqctl {

namespace {

constexpr long long kDaySeconds = 24 * 60 * 60;
constexpr int kTextSize = PATH_MAX + 64;

template <typename Row>
std::vector<Row> takeList(Row *list, int count, int (*release)(Row *))
{
    std::vector<Row> rows(list, list + count);
    (void)release(list);
    return rows;
}

std::string text(int (*read)(char *, int))
{
    std::array<char, kTextSize> buffer {};
    return read(buffer.data(), kTextSize) == 0 ? std::string(buffer.data()) : std::string();
}

std::optional<ReportFields> report(int kind, int type)
{
    std::array<unsigned char, VELQ_STATISTICS_REPORT_SIZE> bytes {};
    if (VELQ_Statistics_GetReport(kind, bytes.data(), static_cast<_VELQ_EN_CONNECT_TYPE>(type))
        != 0)
        return std::nullopt;
    return decodeReport(bytes.data());
}

std::optional<std::vector<VELQ_Usage>> hourRows(int from, int to)
{
    // Which hours belong to a day depends on where the computer was: the rows say it.
    VELQ_Usage *list = nullptr;
    int count = 0;
    if (VELQ_StatisticsSrv_GetHours((from - 2) * kDaySeconds, (to + 3) * kDaySeconds, &list, &count)
        != 0)
        return std::nullopt;
    auto rows = takeList(list, count, &VELQ_StatisticsSrv_ReleaseUsage);
    rows.erase(
        std::remove_if(rows.begin(), rows.end(),
                       [=](const VELQ_Usage &row) { return row.day < from || row.day > to; }),
        rows.end());
    return rows;
}

} // namespace

Outcome configureSdk(const Command &command)
{
    if (!command.dataDirectory.empty()) {
        std::error_code error;
        const std::string path = std::filesystem::absolute(command.dataDirectory, error).string();
        if (error || VELQ_StoreSrv_SetDirectory(path.c_str()) != 0)
            return { ExitCode::Usage, {}, "--data-dir: no directory can have this name" };
    }
    if (!command.interface.empty() && VELQ_DevSrv_SetInterface(command.interface.c_str()) != 0)
        return { ExitCode::Usage,
                 {},
                 "--interface: no interface can be called \"" + printable(command.interface)
                     + "\"" };
    if (command.demo && VELQ_DevSrv_StartDemo() != 0)
        return { ExitCode::Failed, {}, "the demonstration could not be started" };
    if (VELQ_StatisticsSrv_SetPeriodStart(command.weekStart, command.monthStart) != 0)
        return { ExitCode::Failed, {}, "the periods' beginnings were not taken" };
    return {};
}

StoreState storeState()
{
    StoreState state;
    state.counting = VELQ_StoreSrv_IsCounting() != 0;
    state.path = text(&VELQ_StoreSrv_GetPath);
    state.problem = text(&VELQ_StoreSrv_GetProblem);
    return state;
}

std::string countedInterface()
{
    return text(&VELQ_DevSrv_GetInterface);
}

bool isConnected()
{
    VELQ_ConnectionStatus *list = nullptr;
    int count = 0;
    if (VELQ_NetConnectSrv_GetConnectionStatus(&list, &count) != 0)
        return false;
    (void)VELQ_NetConnectSrv_ReleaseConnectionStatus(list);
    return count > 0;
}

std::string usedDevice()
{
    return text(&VELQ_DevSrv_GetUsedDevice);
}

std::optional<std::vector<VELQ_Device>> devices()
{
    VELQ_Device *list = nullptr;
    int count = 0;
    if (VELQ_DevSrv_GetDevices(&list, &count) != 0)
        return std::nullopt;
    return takeList(list, count, &VELQ_DevSrv_ReleaseDevices);
}

std::optional<PeriodFigures> periodFigures(int kind, int type)
{
    PeriodFigures figures;
    const auto fields = report(kind, type);
    if (!fields || VELQ_StatisticsSrv_GetPeriod(kind, &figures.from, &figures.to) != 0)
        return std::nullopt;
    figures.kind = kind;
    figures.type = type;
    figures.download = fields->download;
    figures.upload = fields->upload;
    figures.seconds = fields->seconds;
    return figures;
}

std::optional<std::vector<PeriodFigures>> periodFigures(const std::vector<int> &kinds)
{
    std::vector<PeriodFigures> all;
    for (const int kind : kinds) {
        for (int type = 0; type < kConnectTypes; ++type) {
            const auto figures = periodFigures(kind, type);
            if (!figures)
                return std::nullopt;
            all.push_back(*figures);
        }
    }
    return all;
}

std::optional<std::vector<VELQ_Reason>> reasons(int most)
{
    VELQ_Reason *list = nullptr;
    int count = 0;
    if (VELQ_StatisticsSrv_GetReasons(most, &list, &count) != 0)
        return std::nullopt;
    return takeList(list, count, &VELQ_StatisticsSrv_ReleaseReasons);
}

std::optional<std::vector<VELQ_Usage>> usage(bool hours, int from, int to)
{
    if (hours)
        return hourRows(from, to);
    VELQ_Usage *list = nullptr;
    int count = 0;
    if (VELQ_StatisticsSrv_GetDays(from, to < INT_MAX ? to + 1 : to, &list, &count) != 0)
        return std::nullopt;
    return takeList(list, count, &VELQ_StatisticsSrv_ReleaseUsage);
}

std::optional<int> today()
{
    int from = 0;
    int to = 0;
    if (VELQ_StatisticsSrv_GetPeriod(kDaily, &from, &to) != 0)
        return std::nullopt;
    return from;
}

long long lastReset(int type)
{
    constexpr int kLastReset = 2;
    const auto fields = report(kLastReset, type);
    return fields ? fields->lastReset : 0;
}

void writeBooks()
{
    (void)devices(); // asking for them writes first
}

} // namespace velqctl
