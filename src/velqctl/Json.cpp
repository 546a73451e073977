#include "Json.h"

#include "Dates.h"
#include "Words.h"

namespace velqctl {

namespace {

Json timeOrNull(long long seconds)
{
    return seconds > 0 ? Json(utcText(seconds)) : Json(nullptr);
}

//! What the modem itself says, for comparison only.
Json modemFigure(const VELQ_Device &device, unsigned long long bytes)
{
    return device.hasModemFigures ? Json(bytes) : Json(nullptr);
}

} // namespace

std::string documentText(const Json &document)
{
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

Json toJson(const PeriodFigures &figures)
{
    return { { "period", periodWord(figures.kind) },  { "type", typeWord(figures.type) },
             { "from", dayText(figures.from) },       { "to", dayText(figures.to - 1) },
             { "download_bytes", figures.download },  { "upload_bytes", figures.upload },
             { "connected_seconds", figures.seconds } };
}

Json toJson(const VELQ_Usage &usage)
{
    return { { "day", dayText(usage.day) },
             { "hour", usage.start < 0 ? Json(nullptr) : Json(utcText(usage.start)) },
             { "device", usage.device },
             { "type", typeWord(usage.connectType) },
             { "roaming", usage.roaming != 0 },
             { "download_bytes", usage.download },
             { "upload_bytes", usage.upload },
             { "connected_ms", usage.timeMs } };
}

Json toJson(const VELQ_Device &device)
{
    return { { "key", device.key },
             { "label", device.label },
             { "interface", device.interface },
             { "type", typeWord(device.connectType) },
             { "present", device.present != 0 },
             { "up", device.up != 0 },
             { "counted", device.counted != 0 },
             { "chosen", device.chosen != 0 },
             { "roaming", device.roaming != 0 },
             { "last_use", timeOrNull(device.lastUse) },
             { "modem_download_bytes", modemFigure(device, device.modemDownload) },
             { "modem_upload_bytes", modemFigure(device, device.modemUpload) } };
}

Json toJson(const VELQ_Reason &reason)
{
    return { { "at", utcText(reason.at) },
             { "reason", reasonWord(reason.kind) },
             { "type", typeWord(reason.connectType) },
             { "device", reason.device },
             { "download_bytes", reason.download },
             { "upload_bytes", reason.upload },
             { "seconds", reason.seconds } };
}

} // namespace velqctl
