#pragma once

#include <string>

namespace velq {

constexpr std::size_t kLongestInterfaceName = 15;

/*! Whether an interface can have this name: 1 to 15 bytes, no "/", no blank, not "." or "..". */
[[nodiscard]] bool isInterfaceName(const std::string &name);

/*! Whether \a name is Wi-Fi. \a root is "" for the system, a folder in its place in tests. */
[[nodiscard]] bool isWireless(const std::string &root, const std::string &name);

} // namespace velq
