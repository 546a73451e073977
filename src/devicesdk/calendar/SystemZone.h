#pragma once

#include "calendar/TimeZone.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <tuple>

namespace velq {

/*! The zone of this system, read again when something has changed. Any thread may call. */
class SystemZone
{
public:
    explicit SystemZone(const std::string &localFile = "/etc/localtime");

    //! With \a variable for TZ's value; null if it is not set. UTC if there is nothing to be read.
    [[nodiscard]] TimeZone current(const char *variable);
    //! Gives back what is kept; the next call reads again.
    void forget();

private:
    //! Everything that tells a change: TZ, its file, where that points to, and the file's status.
    using State = std::tuple<bool, std::string, std::string, std::string, std::uint64_t,
                             std::uint64_t, std::int64_t, std::int64_t, std::int64_t>;

    [[nodiscard]] State look(const char *variable) const;

    const std::string m_localFile;
    std::mutex m_mutex;
    State m_state;
    std::optional<TimeZone> m_zone;
};

} // namespace velq
