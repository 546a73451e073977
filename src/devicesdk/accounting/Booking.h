#pragma once

#include "accounting/Amounts.h"

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace velq {

constexpr int kConnectTypes = 2; //!< 0: everything that is not Wi-Fi, 1: Wi-Fi
constexpr int kUseKinds = 4; //!< connect types at home and abroad

/*! What is counted apart: the connect type and roaming, as one number that is stored. */
[[nodiscard]] constexpr int useKind(int type, bool roaming)
{
    return type + (roaming ? kConnectTypes : 0);
}
[[nodiscard]] constexpr int typeOfUse(int use)
{
    return use % kConnectTypes;
}
[[nodiscard]] constexpr bool isRoaming(int use)
{
    return use >= kConnectTypes;
}

/*! What a device has used since the last look. */
struct Booking
{
    std::string device; //!< its key, see Identity.h
    int use = 0; //!< see useKind()
    Amounts amounts;
};

/*! Names one life of a link: the same index may belong to another link later. */
struct LinkId
{
    std::string boot; //!< the kernel's boot id
    int index = 0;
    std::uint64_t instance = 0;

    [[nodiscard]] bool operator<(const LinkId &other) const
    {
        return std::tie(boot, index, instance) < std::tie(other.boot, other.index, other.instance);
    }
    [[nodiscard]] bool operator==(const LinkId &other) const
    {
        return std::tie(boot, index, instance) == std::tie(other.boot, other.index, other.instance);
    }
};

/*! Up to where a link is in the books: what it counts beyond is still to be booked. */
struct LinkMark
{
    LinkId id;
    std::string name;
    std::string device;
    int use = 0;
    std::uint64_t download = 0;
    std::uint64_t upload = 0;

    [[nodiscard]] bool operator==(const LinkMark &other) const
    {
        return id == other.id
            && std::tie(name, device, use, download, upload)
            == std::tie(other.name, other.device, other.use, other.download, other.upload);
    }
};

/*! Why a figure is what it is: something out of the ordinary that happened to the books. */
enum class ReasonKind {
    Recovered = 1, //!< flowed while nobody counted, booked later
    CounterFell = 2, //!< a counter restarted; nothing was counted for it
    ClockStepped
    = 3, //!< the wall clock jumped; what was booked since the start of the system moved
    Corrected = 4, //!< the operator's figure was taken over
    Reset = 5,
    SetAside = 6, //!< a damaged store was replaced
};

struct Reason
{
    ReasonKind kind = ReasonKind::Recovered;
    std::int64_t at = 0; //!< wall clock, seconds since 1970 UTC; set by the ledger
    std::string device; //!< key; empty where no device is meant
    int use = 0;
    std::int64_t download = 0; //!< bytes, by kind
    std::int64_t upload = 0;
    std::int64_t seconds = 0; //!< ClockStepped: by how much
    std::string text; //!< in English, for a person
};

/*! A device as the books know it. */
struct DeviceNote
{
    std::string key;
    std::string label; //!< for a person: model, operator or interface name
    std::string interface; //!< the latest one
    int type = 0;

    [[nodiscard]] bool operator==(const DeviceNote &other) const
    {
        return std::tie(key, label, interface, type)
            == std::tie(other.key, other.label, other.interface, other.type);
    }
};

/*! All that one look adds to the books; belongs together in one transaction. */
struct BookingBatch
{
    std::vector<Booking> bookings;
    std::vector<LinkMark> marks; //!< new and changed ones
    std::vector<LinkId> settled; //!< links that need no mark any more
    std::vector<DeviceNote> devices; //!< new and changed ones
    std::vector<Reason> reasons;

    [[nodiscard]] bool isEmpty() const
    {
        return bookings.empty() && marks.empty() && settled.empty() && devices.empty()
            && reasons.empty();
    }
};

} // namespace velq
