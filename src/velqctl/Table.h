#pragma once

#include <string>
#include <vector>

namespace velqctl {

enum class Align { Left, Right };

/*!
 * Rows as lines, two blanks between columns, each as wide as its widest cell. A column without an
 * entry in \a columns is to the left. Control characters in cells become "?".
 */
[[nodiscard]] std::string table(const std::vector<Align> &columns,
                                const std::vector<std::vector<std::string>> &rows);

} // namespace velqctl
