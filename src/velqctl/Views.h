#pragma once
// What a person reads: texts and tables of rows.

#include "PeriodFigures.h"

#include <host/velq_extension.h>

#include <string>
#include <vector>

namespace velqctl {

[[nodiscard]] std::string reportText(const std::vector<PeriodFigures> &figures);
//! Days, or hours in local time.
[[nodiscard]] std::string historyText(const std::vector<VELQ_Usage> &rows);
[[nodiscard]] std::string devicesText(const std::vector<VELQ_Device> &devices,
                                      const std::string &used);
//! One sentence a reason.
[[nodiscard]] std::string reasonsText(const std::vector<VELQ_Reason> &reasons);

} // namespace velqctl
