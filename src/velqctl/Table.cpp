#include "Table.h"

#include "Words.h"

#include <algorithm>

namespace velqctl {

namespace {

//! In characters, of UTF-8.
std::size_t width(const std::string &text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xc0) != 0x80;
    }));
}

std::string padded(const std::string &text, std::size_t size, Align align)
{
    const std::string blanks(size - width(text), ' ');
    return align == Align::Right ? blanks + text : text + blanks;
}

std::string line(const std::vector<Align> &columns, const std::vector<std::size_t> &widths,
                 const std::vector<std::string> &cells)
{
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const Align align = i < columns.size() ? columns[i] : Align::Left;
        text += (i > 0 ? "  " : "") + padded(printable(cells[i]), widths[i], align);
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text + '\n';
}

} // namespace

std::string table(const std::vector<Align> &columns,
                  const std::vector<std::vector<std::string>> &rows)
{
    std::vector<std::size_t> widths;
    for (const auto &cells : rows) {
        widths.resize(std::max(widths.size(), cells.size()));
        for (std::size_t i = 0; i < cells.size(); ++i)
            widths[i] = std::max(widths[i], width(printable(cells[i])));
    }
    std::string text;
    for (const auto &cells : rows)
        text += line(columns, widths, cells);
    return text;
}

} // namespace velqctl
