#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace velq {

//! Writes \a text, NUL-terminated and cut to the end of a character that fits \a size, at least 1.
inline void writeCut(char *target, std::size_t size, const std::string &text)
{
    std::size_t length = text.size() < size ? text.size() : size - 1;
    constexpr unsigned char kContinued = 0x80; // 10xxxxxx: not the first byte of a character
    while (length < text.size() && length > 0
           && (static_cast<unsigned char>(text[length]) & 0xc0) == kContinued)
        --length;
    std::memcpy(target, text.data(), length);
    target[length] = 0;
}

//! Fills all of \a target.
template <std::size_t Size>
void writeText(char (&target)[Size], const std::string &text)
{
    std::memset(target, 0, Size);
    writeCut(target, Size, text);
}

//! Writes all of \a text, NUL-terminated; false when it does not fit.
[[nodiscard]] inline bool writeWhole(char *target, int size, const std::string &text)
{
    if (text.size() >= static_cast<std::size_t>(size))
        return false;
    std::memcpy(target, text.c_str(), text.size() + 1);
    return true;
}

//! Gives \a rows to the caller, who hands them to delete[] later.
template <typename Row>
void giveList(const std::vector<Row> &rows, Row **list, int *count)
{
    std::unique_ptr<Row[]> copy;
    if (!rows.empty()) {
        copy = std::make_unique<Row[]>(rows.size());
        std::copy(rows.begin(), rows.end(), copy.get());
    }
    *count = static_cast<int>(rows.size());
    *list = copy.release();
}

} // namespace velq
