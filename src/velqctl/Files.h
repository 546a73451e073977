#pragma once

#include <string>

namespace velqctl {

//! Writes all of \a text; 0, or the error's number.
[[nodiscard]] int writeAll(int file, const std::string &text);

/*!
 * Puts \a text into \a path in one step: a reader sees the old file or the new one. What is no
 * regular file (a pipe, a terminal) is written to. Empty, or what went wrong.
 */
[[nodiscard]] std::string replaceFile(const std::string &path, const std::string &text);

//! Gives descriptors 0 to 2 a place, so that no file of the store becomes the standard output.
void holdStandardFiles();

} // namespace velqctl
