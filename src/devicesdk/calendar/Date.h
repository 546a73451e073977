#pragma once

#include <cstdint>

namespace velq {

using Day = std::int32_t; //!< a date as days since 1970-01-01, in the Gregorian calendar for ever

struct Date
{
    int year = 1970;
    int month = 1; //!< 1 to 12
    int day = 1; //!< 1 to 31
};

//! A month or day that runs over counts on into the neighbouring years or months.
[[nodiscard]] Day dayNumber(const Date &date);
[[nodiscard]] Date dateOf(Day day);

} // namespace velq
