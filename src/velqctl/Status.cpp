#include "Status.h"

#include "Amount.h"
#include "Json.h"
#include "Table.h"
#include "Words.h"

namespace velqctl {

namespace {

std::string connectionText(const Status &status)
{
    if (status.interface.empty())
        return "none";
    std::string text = status.interface;
    if (status.device && status.device->label != status.interface)
        text += std::string(" (") + status.device->label + ")";
    if (status.device)
        text += ", " + typeWord(status.device->connectType);
    text += status.connected ? ", connected" : ", not connected";
    return text + (status.device && status.device->roaming ? ", abroad" : "");
}

std::string periodName(const PeriodFigures &figures)
{
    const std::string name = periodWord(figures.kind);
    return static_cast<char>(name.front() - 'a' + 'A') + name.substr(1) + ", "
        + typeWord(figures.type) + ":";
}

} // namespace

std::string statusText(const Status &status)
{
    std::vector<std::vector<std::string>> rows {
        { "Connection:", connectionText(status) },
        { "Counting:", status.store.counting ? "yes, this process" : "yes, another process" },
        { "Used device:", status.used.empty() ? "automatic" : status.used },
    };
    for (const PeriodFigures &figures : status.periods)
        rows.push_back(
            { periodName(figures),
              amountText(figures.download) + " down, " + amountText(figures.upload) + " up" });
    rows.push_back({ "Store:", status.store.path.empty() ? "in memory" : status.store.path });
    return table({}, rows);
}

std::string statusJson(const Status &status)
{
    Json periods = Json::array();
    for (const PeriodFigures &figures : status.periods)
        periods.push_back(toJson(figures));
    const auto textOrNull
        = [](const std::string &text) { return text.empty() ? Json(nullptr) : Json(text); };
    return documentText({ { "connected", status.connected },
                          { "interface", textOrNull(status.interface) },
                          { "device", status.device ? toJson(*status.device) : Json(nullptr) },
                          { "used_device", textOrNull(status.used) },
                          { "counting", status.store.counting },
                          { "store", textOrNull(status.store.path) },
                          { "problem", textOrNull(status.store.problem) },
                          { "periods", std::move(periods) } });
}

} // namespace velqctl
