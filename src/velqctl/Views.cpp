#include "Views.h"

#include "Amount.h"
#include "Dates.h"
#include "Table.h"
#include "Words.h"

namespace velqctl {

namespace {

using Cells = std::vector<std::string>;

std::string spanText(int from, int to)
{
    return to - from == 1 ? dayText(from) : dayText(from) + " to " + dayText(to - 1);
}

std::string hourText(const VELQ_Usage &row)
{
    return row.start < 0 ? dayText(row.day) : localText(row.start).substr(0, 16);
}

std::string stateText(const VELQ_Device &device)
{
    if (!device.present)
        return "away";
    std::string text = device.up ? "up" : "down";
    if (device.chosen)
        text += ", chosen";
    else if (device.counted)
        text += ", counted";
    return text + (device.roaming ? ", abroad" : "");
}

std::string bothText(const VELQ_Reason &reason)
{
    return amountText(reason.download) + " down, " + amountText(reason.upload) + " up";
}

std::string changeText(long long bytes)
{
    return (bytes < 0 ? "" : "+") + amountText(bytes);
}

std::string sentence(const VELQ_Reason &reason)
{
    switch (reason.kind) {
    case VELQ_REASON_RECOVERED:
        return bothText(reason) + " flowed while nobody counted and were booked later";
    case VELQ_REASON_COUNTER_FELL:
        return "the device's counter began anew; nothing was counted for it";
    case VELQ_REASON_CLOCK_STEPPED:
        return "the clock jumped by " + std::to_string(reason.seconds) + " s; " + bothText(reason)
            + " were dated anew";
    case VELQ_REASON_CORRECTED:
        return "the operator's figure was taken over: " + changeText(reason.download) + " down, "
            + changeText(reason.upload) + " up";
    case VELQ_REASON_RESET:
        return "the figures were cleared";
    case VELQ_REASON_SET_ASIDE:
        return "the store was damaged, was set aside and begun anew";
    default:
        return "reason " + std::to_string(reason.kind);
    }
}

} // namespace

std::string reportText(const std::vector<PeriodFigures> &figures)
{
    std::vector<Cells> rows { { "Period", "Type", "Download", "Upload", "Total", "Connected",
                                "Days" } };
    for (const PeriodFigures &row : figures) {
        rows.push_back({ periodWord(row.kind), typeWord(row.type), amountText(row.download),
                         amountText(row.upload), amountText(row.download + row.upload),
                         durationText(row.seconds), spanText(row.from, row.to) });
    }
    return table(
        { Align::Left, Align::Left, Align::Right, Align::Right, Align::Right, Align::Right }, rows);
}

std::string historyText(const std::vector<VELQ_Usage> &usage)
{
    if (usage.empty())
        return "Nothing was counted in this span.\n";
    std::vector<Cells> rows { { usage.front().start < 0 ? "Day" : "Hour", "Type", "Download",
                                "Upload", "Connected", "Device" } };
    for (const VELQ_Usage &row : usage) {
        rows.push_back({ hourText(row), typeWord(row.connectType) + (row.roaming ? " abroad" : ""),
                         amountText(row.download), amountText(row.upload),
                         durationText(row.timeMs / 1000), row.device });
    }
    return table({ Align::Left, Align::Left, Align::Right, Align::Right, Align::Right }, rows);
}

std::string devicesText(const std::vector<VELQ_Device> &devices, const std::string &used)
{
    std::vector<Cells> rows { { "Interface", "State", "Type", "Last use", "Device", "Key" } };
    for (const VELQ_Device &device : devices) {
        rows.push_back({ device.interface, stateText(device), typeWord(device.connectType),
                         device.lastUse > 0 ? localText(device.lastUse) : "-", device.label,
                         device.key });
    }
    return table({}, rows) + "Used: "
        + (used.empty() ? "automatic (what carries the traffic)" : printable(used)) + '\n';
}

std::string reasonsText(const std::vector<VELQ_Reason> &reasons)
{
    if (reasons.empty())
        return "Nothing out of the ordinary.\n";
    std::vector<Cells> rows;
    for (const VELQ_Reason &reason : reasons)
        rows.push_back({ localText(reason.at), typeWord(reason.connectType),
                         reason.device[0] ? reason.device : "-", sentence(reason) });
    return table({}, rows);
}

} // namespace velqctl
