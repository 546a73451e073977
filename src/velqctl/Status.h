#pragma once

#include "ExitCode.h"
#include "PeriodFigures.h"

#include <host/velq_extension.h>

#include <optional>
#include <string>
#include <vector>

namespace velqctl {

/*! What "status" tells. */
struct Status
{
    StoreState store;
    std::string interface; //!< empty: none is counted
    bool connected = false;
    std::optional<VELQ_Device> device; //!< the chosen one
    std::string used; //!< empty: automatic
    std::vector<PeriodFigures> periods;
};

[[nodiscard]] std::string statusText(const Status &status);
[[nodiscard]] std::string statusJson(const Status &status);

} // namespace velqctl
