#pragma once

#include "calendar/Period.h"

#include <string>

namespace velq {

/*! What the host has chosen before the first use. */
struct HostChoices
{
    std::string interface; //!< empty: see chosenInterface()
    std::string directory; //!< empty: see dataDirectory()
    bool demo = false;
    PeriodStart periodStart {}; //!< the only one that may change later
};

//! The interface to count: the host's choice, else VELQ_INTERFACE; empty for the default route.
[[nodiscard]] std::string chosenInterface(const HostChoices &choices);

struct DataDirectory
{
    std::string path; //!< absolute; empty when there is none
    std::string complaint; //!< why there is none
};

//! The host's choice, else VELQ_DATA_DIR, else "velq" in the user's XDG data directory.
[[nodiscard]] DataDirectory dataDirectory(const HostChoices &choices);

} // namespace velq
