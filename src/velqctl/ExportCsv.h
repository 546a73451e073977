#pragma once

#include <host/velq_extension.h>

#include <string>
#include <vector>

namespace velqctl {

//! A header and a line a row, CRLF at their ends, cells quoted where they must be.
[[nodiscard]] std::string usageCsv(const std::vector<VELQ_Usage> &rows);
[[nodiscard]] std::string csvCell(const std::string &text);

} // namespace velqctl
