#pragma once

#include <optional>
#include <string>

namespace velqctl {

//! The largest amount that a correction takes.
constexpr unsigned long long kMostBytes = 1ULL << 62;

/*!
 * The bytes that \a text names: digits, perhaps a point and up to six more, perhaps blanks, perhaps
 * a unit: B, kB, MB, GB, TB (powers of 1000) or KiB to TiB (powers of 1024), in any case and also
 * without "B" ("1.5G"). Parts of a byte are cut off. Empty for anything else.
 */
[[nodiscard]] std::optional<unsigned long long> parseAmount(const std::string &text);

//! In the decimal unit that suits it, with two decimals: "1.50 GB"; "999 B".
[[nodiscard]] std::string amountText(long long bytes);
[[nodiscard]] std::string amountText(unsigned long long bytes);

} // namespace velqctl
