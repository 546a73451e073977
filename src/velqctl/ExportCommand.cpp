#include "Commands.h"

#include "ExportCsv.h"
#include "ExportOpenMetrics.h"
#include "Files.h"
#include "Json.h"
#include "Sdk.h"

namespace velqctl {

namespace {

constexpr int kLastDay = 2932896; // 9999-12-31

std::optional<std::string> metricsText()
{
    Metrics metrics;
    const auto days = usage(false, 0, kLastDay);
    const auto periods = periodFigures(std::vector<int>(kPeriodKinds.begin(), kPeriodKinds.end()));
    if (!days || !periods)
        return std::nullopt;
    metrics.days = *days;
    metrics.periods = *periods;
    for (int type = 0; type < kConnectTypes; ++type)
        metrics.lastResets[static_cast<std::size_t>(type)] = lastReset(type);
    metrics.connected = isConnected();
    const StoreState store = storeState();
    metrics.storeHasProblem = store.counting && !store.problem.empty();
    return openMetrics(metrics);
}

std::optional<std::string> content(const Command &command)
{
    if (command.format == Format::OpenMetrics)
        return metricsText();
    const auto rows = usage(command.hours, command.from.value_or(0), command.to.value_or(kLastDay));
    if (!rows)
        return std::nullopt;
    if (command.format == Format::Csv)
        return usageCsv(*rows);
    return listJson(command.hours ? "hours" : "days", *rows);
}

} // namespace

Outcome runExport(const Command &command)
{
    const auto text = content(command);
    if (!text)
        return unreadableOutcome();
    if (command.file.empty())
        return { ExitCode::Good, *text, {} };
    const StoreState store = storeState();
    const bool saysSo = command.format == Format::OpenMetrics; // "velq_store_problem 1"
    if (store.counting && !store.problem.empty() && !saysSo)
        return { ExitCode::Failed, {}, command.file + " was left as it was: " + store.problem };
    if (const std::string problem = replaceFile(command.file, *text); !problem.empty())
        return { ExitCode::Failed, {}, problem };
    return {};
}

} // namespace velqctl
