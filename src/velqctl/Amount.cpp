#include "Amount.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace velqctl {

namespace {

struct Unit
{
    const char *name; // in lower case, without "b" at its end
    unsigned long long factor;
};
constexpr std::array<Unit, 9> kUnits { {
    { "", 1 },
    { "k", 1000 },
    { "m", 1000000 },
    { "g", 1000000000 },
    { "t", 1000000000000 },
    { "ki", 1ULL << 10 },
    { "mi", 1ULL << 20 },
    { "gi", 1ULL << 30 },
    { "ti", 1ULL << 40 },
} };

constexpr std::size_t kMostDecimals = 6; // times the largest factor they fit 64 bits

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

char lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

std::string takeDigits(const std::string &text, std::size_t &at)
{
    const std::size_t begin = at;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return text.substr(begin, at - begin);
}

std::optional<unsigned long long> factorOf(std::string unit)
{
    std::transform(unit.begin(), unit.end(), unit.begin(), lower);
    if (!unit.empty() && unit.back() == 'b')
        unit.pop_back();
    const auto found = std::find_if(kUnits.begin(), kUnits.end(),
                                    [&unit](const Unit &known) { return unit == known.name; });
    if (found == kUnits.end())
        return std::nullopt;
    return found->factor;
}

std::optional<unsigned long long> number(const std::string &digits)
{
    unsigned long long value = 0;
    for (const char digit : digits) {
        if (value > kMostBytes / 10)
            return std::nullopt;
        value = value * 10 + static_cast<unsigned long long>(digit - '0');
    }
    return value;
}

} // namespace

std::optional<unsigned long long> parseAmount(const std::string &text)
{
    std::size_t at = 0;
    const std::string whole = takeDigits(text, at);
    std::string decimals;
    const bool point = at < text.size() && text[at] == '.';
    if (point)
        decimals = takeDigits(text, ++at);
    if (whole.empty() || (point && decimals.empty()) || decimals.size() > kMostDecimals)
        return std::nullopt;
    while (at < text.size() && text[at] == ' ')
        ++at;
    const auto factor = factorOf(text.substr(at));
    const auto units = number(whole);
    if (!factor || !units || *units > kMostBytes / *factor)
        return std::nullopt;
    unsigned long long divisor = 1;
    for (std::size_t i = 0; i < decimals.size(); ++i)
        divisor *= 10;
    const unsigned long long bytes = *units * *factor + *number(decimals) * *factor / divisor;
    if (bytes > kMostBytes)
        return std::nullopt;
    return bytes;
}

std::string amountText(unsigned long long bytes)
{
    if (bytes < 1000)
        return std::to_string(bytes) + " B";
    constexpr std::array<const char *, 6> kNames { "kB", "MB", "GB", "TB", "PB", "EB" };
    constexpr unsigned long long kNextUnit = 100000; // hundredths
    std::size_t name = 0;
    unsigned long long step = 10; // a hundredth of the unit
    const auto hundredths = [&] { return bytes / step + (bytes % step >= step / 2 ? 1ULL : 0ULL); };
    while (hundredths() >= kNextUnit && name + 1 < kNames.size()) {
        step *= 1000;
        ++name;
    }
    const std::string decimals = std::to_string(hundredths() % 100);
    return std::to_string(hundredths() / 100) + (decimals.size() < 2 ? ".0" : ".") + decimals + ' '
        + kNames[name];
}

std::string amountText(long long bytes)
{
    if (bytes >= 0)
        return amountText(static_cast<unsigned long long>(bytes));
    return '-' + amountText(0ULL - static_cast<unsigned long long>(bytes));
}

} // namespace velqctl
