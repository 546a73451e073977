#pragma once

#include <string>

namespace velq {

/*!
 * The operator's customisation name: VELQ_CUSTOMIZE_NAME, else the first line of the file
 * "customize-name" in \a directory, else "common". Without the blanks around it, at most 127 bytes,
 * never cut inside a character.
 */
[[nodiscard]] std::string customizeName(const std::string &directory);

//! The first line of \a text, trimmed and cut as above.
[[nodiscard]] std::string trimmedName(const std::string &text);

} // namespace velq
