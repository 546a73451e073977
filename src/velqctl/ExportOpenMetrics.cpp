#include "ExportOpenMetrics.h"

#include "Words.h"

#include <map>
#include <tuple>

namespace velqctl {

namespace {

struct Sum
{
    long long download = 0;
    long long upload = 0;
    long long timeMs = 0;
};
using Sums = std::map<std::tuple<std::string, int, bool>, Sum>; // device, type, roaming

//! Of what was counted: an operator's correction may be negative, which no counter can be.
Sums sumsOf(const std::vector<VELQ_Usage> &days)
{
    Sums sums;
    for (const VELQ_Usage &row : days) {
        if (row.device == std::string("operator"))
            continue;
        Sum &sum = sums[{ row.device, row.connectType, row.roaming != 0 }];
        sum.download += row.download;
        sum.upload += row.upload;
        sum.timeMs += row.timeMs;
    }
    return sums;
}

std::string head(const std::string &name, const char *type, const char *unit, const char *help)
{
    std::string text = "# TYPE " + name + ' ' + type + '\n';
    if (*unit)
        text += "# UNIT " + name + ' ' + unit + '\n';
    return text + "# HELP " + name + ' ' + help + '\n';
}

std::string secondsText(long long ms)
{
    const std::string decimals = std::to_string(ms % 1000);
    return std::to_string(ms / 1000) + '.' + std::string(3 - decimals.size(), '0') + decimals;
}

std::string counters(const Sums &sums, const char *name, const char *unit, const char *help,
                     std::string (*value)(const Sum &))
{
    const std::string family = std::string("velq_") + name + '_' + unit;
    std::string text = head(family, "counter", unit, help);
    for (const auto &[key, sum] : sums) {
        const auto &[device, type, roaming] = key;
        text += family + "_total{device=\"" + labelValue(device) + "\",type=\"" + typeWord(type)
            + "\",roaming=\"" + (roaming ? "1" : "0") + "\"} " + value(sum) + '\n';
    }
    return text;
}

std::string periodGauges(const std::vector<PeriodFigures> &periods, const std::string &family,
                         const char *unit, const char *help,
                         std::string (*value)(const PeriodFigures &))
{
    std::string text = head(family, "gauge", unit, help);
    for (const PeriodFigures &row : periods)
        text += family + "{period=\"" + periodWord(row.kind) + "\",type=\"" + typeWord(row.type)
            + "\"} " + value(row) + '\n';
    return text;
}

std::string flag(const std::string &name, const char *help, bool value)
{
    return head(name, "gauge", "", help) + name + (value ? " 1\n" : " 0\n");
}

std::string resets(const Metrics &metrics)
{
    const std::string name = "velq_last_reset_timestamp_seconds";
    std::string text = head(name, "gauge", "seconds", "When the figures were cleared last.");
    for (int type = 0; type < kConnectTypes; ++type) {
        const long long at = metrics.lastResets[static_cast<std::size_t>(type)];
        if (at > 0)
            text += name + "{type=\"" + typeWord(type) + "\"} " + std::to_string(at) + '\n';
    }
    return text;
}

} // namespace

std::string labelValue(const std::string &text)
{
    std::string value;
    for (const char character : text) {
        if (character == '\\' || character == '"')
            value += '\\';
        value += character == '\n' ? "\\n" : std::string(1, character);
    }
    return value;
}

std::string openMetrics(const Metrics &metrics)
{
    const Sums sums = sumsOf(metrics.days);
    return counters(sums, "download", "bytes", "Downloaded since the last reset.",
                    [](const Sum &sum) { return std::to_string(sum.download); })
        + counters(sums, "upload", "bytes", "Uploaded since the last reset.",
                   [](const Sum &sum) { return std::to_string(sum.upload); })
        + counters(sums, "connected", "seconds", "Time connected since the last reset.",
                   [](const Sum &sum) { return secondsText(sum.timeMs); })
        + periodGauges(metrics.periods, "velq_period_download_bytes", "bytes",
                       "Downloaded in the current period, corrections included.",
                       [](const PeriodFigures &row) { return std::to_string(row.download); })
        + periodGauges(metrics.periods, "velq_period_upload_bytes", "bytes",
                       "Uploaded in the current period, corrections included.",
                       [](const PeriodFigures &row) { return std::to_string(row.upload); })
        + periodGauges(metrics.periods, "velq_period_connected_seconds", "seconds",
                       "Time connected in the current period.",
                       [](const PeriodFigures &row) { return std::to_string(row.seconds); })
        + resets(metrics)
        + flag("velq_connected", "Whether a counted connection is up.", metrics.connected)
        + flag("velq_store_problem", "Whether the store has a problem.", metrics.storeHasProblem)
        + "# EOF\n";
}

} // namespace velqctl
