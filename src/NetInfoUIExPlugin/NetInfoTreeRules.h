#pragma once
// The statistics tree's column rule.

namespace NetInfoRules {

constexpr int kFirstColumnWidth = 280; //!< pixels; a row that needs more widens the column

//! Pixels that a row needs: its text and one indentation for itself, one for the branch mark and
//! one for each of its \a depth ancestors.
[[nodiscard]] constexpr int requiredColumnWidth(int textWidth, int indentation, int depth)
{
    return textWidth + indentation * (depth + 2);
}

//! Whether a row that needs \a required pixels widens the column.
[[nodiscard]] constexpr bool widensColumn(int required)
{
    return required > kFirstColumnWidth;
}

//! The column's width after such a row: it never shrinks below the \a widest seen so far.
[[nodiscard]] constexpr int widenedColumn(int required, int widest)
{
    return required > widest ? required : widest;
}

} // namespace NetInfoRules
