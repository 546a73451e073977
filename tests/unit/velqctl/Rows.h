#pragma once
// Rows as the SDK gives them.

#include <host/velq_extension.h>

#include <cstring>
#include <string>

template <std::size_t Size>
void setText(char (&target)[Size], const std::string &text)
{
    std::memcpy(target, text.c_str(), text.size() + 1);
}

inline VELQ_Usage dayRow(int day, const std::string &device, int type, bool roaming,
                         long long download, long long upload, long long timeMs)
{
    VELQ_Usage row {};
    row.start = -1;
    row.day = day;
    row.connectType = type;
    row.roaming = roaming ? 1 : 0;
    setText(row.device, device);
    row.download = download;
    row.upload = upload;
    row.timeMs = timeMs;
    return row;
}

inline VELQ_Device deviceRow(const std::string &key, const std::string &label,
                             const std::string &interface)
{
    VELQ_Device device {};
    setText(device.key, key);
    setText(device.label, label);
    setText(device.interface, interface);
    return device;
}

inline VELQ_Reason reasonRow(int kind, long long at, const std::string &device)
{
    VELQ_Reason reason {};
    reason.kind = kind;
    reason.at = at;
    setText(reason.device, device);
    reason.download = 1500;
    reason.upload = 2;
    reason.seconds = -3600;
    return reason;
}
