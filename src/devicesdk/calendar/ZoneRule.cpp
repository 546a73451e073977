#include "calendar/ZoneRule.h"

#include "calendar/Date.h"

#include <algorithm>

namespace velq {

namespace {

constexpr int kDaysPerWeek = 7;
constexpr int kSecondsPerHour = 3600;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/*! Takes a rule apart from left to right; a function that finds something else returns false. */
class RuleReader
{
public:
    explicit RuleReader(const std::string &text)
        : m_text(text)
    {
    }

    [[nodiscard]] bool atEnd() const
    {
        return m_at == m_text.size();
    }

    [[nodiscard]] char peek() const
    {
        return atEnd() ? '\0' : m_text[m_at];
    }

    [[nodiscard]] bool take(char c)
    {
        if (peek() != c || atEnd())
            return false;
        ++m_at;
        return true;
    }

    [[nodiscard]] bool takeNumber(int smallest, int largest, int &number)
    {
        int value = 0;
        const std::size_t begin = m_at;
        while (isDigit(peek()) && value <= largest)
            value = value * 10 + (m_text[m_at++] - '0');
        if (m_at == begin || value < smallest || value > largest)
            return false;
        number = value;
        return true;
    }

    //! The name of a clock; nothing depends on it.
    [[nodiscard]] bool takeName()
    {
        constexpr std::size_t kShortest = 3;
        const bool quoted = take('<');
        const std::size_t begin = m_at;
        while (isLetter(peek()) || (quoted && (isDigit(peek()) || peek() == '+' || peek() == '-')))
            ++m_at;
        return m_at - begin >= kShortest && (!quoted || take('>'));
    }

    //! [+-]hours[:minutes[:seconds]]
    [[nodiscard]] bool takeTime(int hours, int &seconds)
    {
        const int sign = take('-') ? -1 : 1;
        if (sign == 1)
            (void)take('+');
        int hour = 0;
        int minute = 0;
        int second = 0;
        if (!takeNumber(0, hours, hour) || (take(':') && !takeNumber(0, 59, minute))
            || (take(':') && !takeNumber(0, 59, second)))
            return false;
        seconds = sign * (hour * kSecondsPerHour + minute * 60 + second);
        return true;
    }

    [[nodiscard]] bool takeDate(RuleDate &date)
    {
        constexpr int kDaysPerYear = 365;
        constexpr int kLatestHour = 167;
        if (take('M')) {
            if (!takeNumber(1, 12, date.month) || !take('.') || !takeNumber(1, 5, date.week)
                || !take('.') || !takeNumber(0, kDaysPerWeek - 1, date.weekday))
                return false;
        } else {
            const bool withoutLeap = take('J');
            date.kind = withoutLeap ? RuleDate::Kind::DayWithoutLeap : RuleDate::Kind::DayFromZero;
            if (!takeNumber(withoutLeap ? 1 : 0, kDaysPerYear, date.day))
                return false;
        }
        return !take('/') || takeTime(kLatestHour, date.seconds);
    }

private:
    const std::string &m_text;
    std::size_t m_at = 0;
};

//! What the C library takes for a summer time without dates: those of the United States.
void setUsualDates(ZoneRule &rule)
{
    rule.begin = { RuleDate::Kind::WeekdayOfMonth, 3, 2, 0 };
    rule.end = { RuleDate::Kind::WeekdayOfMonth, 11, 1, 0 };
}

Day weekdayOfMonth(int year, const RuleDate &date)
{
    constexpr int kEpoch = 4; // from Sunday; 1970-01-01 was a Thursday
    const Day first = dayNumber({ year, date.month, 1 });
    const Day next = dayNumber({ year, date.month + 1, 1 });
    const int weekday = ((first + kEpoch) % kDaysPerWeek + kDaysPerWeek) % kDaysPerWeek;
    Day day = first + (date.weekday - weekday + kDaysPerWeek) % kDaysPerWeek
        + (date.week - 1) * kDaysPerWeek;
    if (day >= next) // the fifth where there are but four
        day -= kDaysPerWeek;
    return day;
}

Day dayOfYear(int year, const RuleDate &date)
{
    constexpr int kFebruary28 = 59;
    switch (date.kind) {
    case RuleDate::Kind::WeekdayOfMonth:
        break;
    case RuleDate::Kind::DayWithoutLeap:
        return date.day <= kFebruary28 ? dayNumber({ year, 1, date.day })
                                       : dayNumber({ year, 3, date.day - kFebruary28 });
    case RuleDate::Kind::DayFromZero:
        return dayNumber({ year, 1, 1 }) + date.day;
    }
    return weekdayOfMonth(year, date);
}

std::int64_t changeInstant(int year, const RuleDate &date, int offset)
{
    constexpr std::int64_t kSecondsPerDay = 86400;
    return dayOfYear(year, date) * kSecondsPerDay + date.seconds - offset;
}

} // namespace

std::optional<ZoneRule> parseZoneRule(const std::string &text)
{
    constexpr int kLargestOffset = 23; // hours; no zone is a whole day off
    RuleReader reader(text);
    ZoneRule rule;
    int west = 0; // rules count offsets westwards
    if (!reader.takeName() || !reader.takeTime(kLargestOffset, west))
        return std::nullopt;
    rule.standard = -west;
    if (reader.atEnd())
        return rule;
    rule.hasSummer = true;
    if (!reader.takeName())
        return std::nullopt;
    west -= kSecondsPerHour; // what summer time usually is
    if (!reader.atEnd() && reader.peek() != ',' && !reader.takeTime(kLargestOffset, west))
        return std::nullopt;
    rule.summer = -west;
    if (reader.atEnd()) {
        setUsualDates(rule);
        return rule;
    }
    if (!reader.take(',') || !reader.takeDate(rule.begin) || !reader.take(',')
        || !reader.takeDate(rule.end) || !reader.atEnd())
        return std::nullopt;
    return rule;
}

std::vector<ZoneChange> changesOf(const ZoneRule &rule)
{
    constexpr int kFirstYear = 1900;
    constexpr int kLastYear = 2400;
    std::vector<ZoneChange> changes;
    for (int year = kFirstYear; rule.hasSummer && year <= kLastYear; ++year) {
        changes.push_back({ changeInstant(year, rule.begin, rule.standard), rule.summer });
        changes.push_back({ changeInstant(year, rule.end, rule.summer), rule.standard });
    }
    std::stable_sort(changes.begin(), changes.end(), [](const ZoneChange &a, const ZoneChange &b) {
        return a.instant < b.instant;
    });
    // Summer time all the year ends where the next year's begins: of two at once the later one
    // counts.
    const auto kept = std::unique(
        changes.rbegin(), changes.rend(),
        [](const ZoneChange &a, const ZoneChange &b) { return a.instant == b.instant; });
    changes.erase(changes.begin(), kept.base());
    return changes;
}

} // namespace velq
