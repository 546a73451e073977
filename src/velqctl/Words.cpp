#include "Words.h"

#include <host/velq_extension.h>

#include <array>

namespace velqctl {

namespace {

struct Word
{
    int number;
    const char *word;
};
constexpr std::array<Word, 2> kTypes { {
    { VELQ_CONNECT_TYPE_DIALUP, "mobile" },
    { VELQ_CONNECT_TYPE_WLAN, "wifi" },
} };
constexpr std::array<Word, 4> kPeriods { {
    { 1, "daily" },
    { 3, "weekly" },
    { 4, "monthly" },
    { 5, "yearly" },
} };
constexpr std::array<Word, 6> kReasons { {
    { VELQ_REASON_RECOVERED, "recovered" },
    { VELQ_REASON_COUNTER_FELL, "counter_fell" },
    { VELQ_REASON_CLOCK_STEPPED, "clock_stepped" },
    { VELQ_REASON_CORRECTED, "corrected" },
    { VELQ_REASON_RESET, "reset" },
    { VELQ_REASON_SET_ASIDE, "set_aside" },
} };

template <std::size_t Size>
std::string wordOf(const std::array<Word, Size> &words, int number)
{
    for (const Word &word : words) {
        if (word.number == number)
            return word.word;
    }
    return "unknown_" + std::to_string(number);
}

template <std::size_t Size>
std::optional<int> numberOf(const std::array<Word, Size> &words, const std::string &text)
{
    for (const Word &word : words) {
        if (text == word.word)
            return word.number;
    }
    return std::nullopt;
}

bool isControl(unsigned char byte)
{
    return byte < 0x20 || byte == 0x7f;
}

} // namespace

std::string typeWord(int type)
{
    return wordOf(kTypes, type);
}

std::optional<int> parseType(const std::string &word)
{
    return numberOf(kTypes, word);
}

std::string periodWord(int kind)
{
    return wordOf(kPeriods, kind);
}

std::optional<int> parsePeriod(const std::string &word)
{
    return numberOf(kPeriods, word);
}

std::string reasonWord(int kind)
{
    return wordOf(kReasons, kind);
}

std::string printable(const std::string &text)
{
    std::string result = text;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto byte = static_cast<unsigned char>(result[i]);
        if (isControl(byte))
            result[i] = '?';
        // The second set of control characters is C2 80 to C2 9F in UTF-8.
        const auto next = i + 1 < result.size() ? static_cast<unsigned char>(result[i + 1]) : 0;
        if (byte == 0xc2 && next >= 0x80 && next < 0xa0)
            result.replace(i, 2, "?");
    }
    return result;
}

} // namespace velqctl
