#include "Dates.h"

#include <array>
#include <cstdlib>
#include <ctime>

namespace velqctl {

namespace {

constexpr long long kDaySeconds = 24 * 60 * 60;

std::string twoDigits(long long number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string dateOf(const std::tm &parts)
{
    std::array<char, 64> text {};
    (void)std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts);
    return text.data();
}

std::string clockOf(const std::tm &parts)
{
    std::array<char, 64> text {};
    (void)std::strftime(text.data(), text.size(), "%H:%M:%S", &parts);
    return text.data();
}

std::tm utcParts(long long seconds)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts {};
    (void)gmtime_r(&time, &parts); // years that do not fit an int stay 1900
    return parts;
}

} // namespace

std::string dayText(int day)
{
    return dateOf(utcParts(day * kDaySeconds));
}

std::optional<int> parseDay(const std::string &text)
{
    constexpr const char *kPattern = "dddd-dd-dd";
    if (text.size() != 10)
        return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (kPattern[i] == 'd' ? !digit : text[i] != '-')
            return std::nullopt;
    }
    std::tm parts {};
    parts.tm_year = std::atoi(text.substr(0, 4).c_str()) - 1900;
    parts.tm_mon = std::atoi(text.substr(5, 2).c_str()) - 1;
    parts.tm_mday = std::atoi(text.substr(8, 2).c_str());
    const int day = static_cast<int>(timegm(&parts) / kDaySeconds);
    if (day < 0 || dayText(day) != text) // the 30th of February counts on into March
        return std::nullopt;
    return day;
}

std::string utcText(long long seconds)
{
    const std::tm parts = utcParts(seconds);
    return dateOf(parts) + 'T' + clockOf(parts) + 'Z';
}

std::string localText(long long seconds)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts {};
    (void)localtime_r(&time, &parts);
    return dateOf(parts) + ' ' + clockOf(parts);
}

std::string durationText(long long seconds)
{
    return std::to_string(seconds / 3600) + ':' + twoDigits(seconds / 60 % 60) + ':'
        + twoDigits(seconds % 60);
}

} // namespace velqctl
