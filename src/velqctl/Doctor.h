#pragma once

#include "ExitCode.h"

#include <optional>
#include <string>
#include <vector>

namespace velqctl {

enum class Level { Ok, Warning, Error };

struct Check
{
    std::string name; //!< a word for programs
    Level level = Level::Ok;
    std::string text;
};

/*! What "doctor" found out. */
struct DoctorFacts
{
    StoreState store;
    std::string directory; //!< of the store; empty: in memory
    bool directoryIsThere = false;
    bool directoryWritable = false;
    bool fileIsThere = false;
    bool fileWritable = false;
    unsigned long long freeBytes = 0; //!< on its disk
    std::vector<std::string> setAside; //!< damaged stores that were kept
    std::string interface;
    bool connected = false;
    bool counters = false; //!< the kernel's could be read
    std::string used; //!< empty: automatic
    bool usedIsPresent = false;
    std::string zone; //!< TZ, or where /etc/localtime leads; empty: nothing of both
    bool zoneIsKnown = false;
    bool bootId = false;
    bool busSocket = false;
    std::string busAddress;
    long long now = 0; //!< seconds since 1970-01-01 UTC
};

[[nodiscard]] std::vector<Check> diagnose(const DoctorFacts &facts);
[[nodiscard]] bool hasError(const std::vector<Check> &checks);
[[nodiscard]] std::string checksText(const std::vector<Check> &checks);
[[nodiscard]] std::string checksJson(const std::vector<Check> &checks);

//! The path of a bus address' socket; empty when it has none to look at.
[[nodiscard]] std::string socketPath(const std::string &address);

} // namespace velqctl
