#pragma once

#include <optional>
#include <string>

namespace velqctl {

//! "mobile" or "wifi" for a connect type.
[[nodiscard]] std::string typeWord(int type);
[[nodiscard]] std::optional<int> parseType(const std::string &word);

//! "daily", "weekly", "monthly", "yearly" for a report's kind 1, 3, 4, 5.
[[nodiscard]] std::string periodWord(int kind);
[[nodiscard]] std::optional<int> parsePeriod(const std::string &word);

//! A word for programs: "recovered", "counter_fell"...
[[nodiscard]] std::string reasonWord(int kind);

//! \a text on one line, without what a terminal would take as a command.
[[nodiscard]] std::string printable(const std::string &text);

} // namespace velqctl
