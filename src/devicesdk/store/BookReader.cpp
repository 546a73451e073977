#include "store/BookReader.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace velq {

namespace {

Amounts amountsAt(const Statement &row, int column)
{
    return { row.integer(column), row.integer(column + 1), row.integer(column + 2),
             row.integer(column + 3) };
}

//! Days and types beyond all days and types stay beyond.
int number(const Statement &row, int column)
{
    constexpr std::int64_t kLeast = std::numeric_limits<int>::min();
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(row.integer(column), kLeast, kMost));
}

int use(const Statement &row, int column)
{
    return std::clamp(number(row, column), 0, kUseKinds - 1);
}

bool isWhole(const Statement &row, int column)
{
    return row.integer(column) == number(row, column);
}

bool isTime(const Statement &row, int column)
{
    return row.integer(column) >= -kLatestSecond && row.integer(column) <= kLatestSecond;
}

} // namespace

template <typename Row>
int BookReader::each(Statement &statement, Row &&row) const
{
    int code = statement.step();
    for (; code == SQLITE_ROW; code = statement.step())
        row();
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

int BookReader::daySums(DaySums &sums) const
{
    Statement row;
    const int code
        = row.prepare(m_database, "SELECT day, use, download, upload, time_ms, any_ms FROM day");
    if (code != SQLITE_OK)
        return code;
    return each(row, [&] { sums.add(number(row, 0), use(row, 1), amountsAt(row, 2)); });
}

int BookReader::hours(const Span &span, HourAmounts &hours) const
{
    Statement row;
    const int code
        = row.prepare(m_database,
                      "SELECT start, day, key, use, download, upload, time_ms, any_ms FROM hour"
                      " JOIN device ON device.id = hour.device WHERE start >= ?1 AND start < ?2");
    if (code != SQLITE_OK)
        return code;
    row.bind(1, span.from);
    row.bind(2, span.to);
    return each(row, [&] {
        hours[{ row.integer(0), number(row, 1), row.text(2), use(row, 3) }].add(amountsAt(row, 4));
    });
}

int BookReader::days(const DaySpan &span, DayAmounts &days) const
{
    Statement row;
    const int code
        = row.prepare(m_database,
                      "SELECT day, key, use, download, upload, time_ms, any_ms FROM day"
                      " JOIN device ON device.id = day.device WHERE day >= ?1 AND day < ?2");
    if (code != SQLITE_OK)
        return code;
    row.bind(1, span.from);
    row.bind(2, span.to);
    return each(row, [&] {
        days[{ number(row, 0), row.text(1), use(row, 2) }].add(amountsAt(row, 3));
    });
}

int BookReader::marks(std::vector<LinkMark> &marks) const
{
    Statement row;
    const int code = row.prepare(
        m_database, "SELECT boot, link, instance, name, device, use, download, upload FROM mark");
    if (code != SQLITE_OK)
        return code;
    return each(row, [&] {
        if (!isWhole(row, 1)) // no link has that number, and it could not be settled
            return;
        marks.push_back(
            { { row.text(0), number(row, 1), static_cast<std::uint64_t>(row.integer(2)) },
              row.text(3),
              row.text(4),
              use(row, 5),
              static_cast<std::uint64_t>(row.integer(6)),
              static_cast<std::uint64_t>(row.integer(7)) });
    });
}

int BookReader::recent(RecentRows &rows) const
{
    Statement row;
    const int code = row.prepare(
        m_database,
        "SELECT boot, offset, home_start, home_day, device, use, boot_seconds, start, day,"
        " download, upload, time_ms, any_ms FROM recent");
    if (code != SQLITE_OK)
        return code;
    return each(row, [&] {
        const bool isOurs = isTime(row, 1) && isTime(row, 2) && isWhole(row, 3)
            && row.integer(5) == use(row, 5) && isTime(row, 6) && isTime(row, 7);
        if (!isOurs) // no clock has shown that, and it could not be forgotten
            return;
        const HourKey home { row.integer(2), number(row, 3), row.text(4), use(row, 5) };
        rows[{ row.text(0), row.integer(1), home }]
            = { row.integer(6), row.integer(7), number(row, 8), amountsAt(row, 9) };
    });
}

int BookReader::devices(std::vector<StoredDevice> &devices) const
{
    Statement row;
    const int code = row.prepare(
        m_database, "SELECT key, label, interface, type, seen FROM device ORDER BY seen, key");
    if (code != SQLITE_OK)
        return code;
    return each(row, [&] {
        devices.push_back(
            { { row.text(0), row.text(1), row.text(2), number(row, 3) }, row.integer(4) });
    });
}

int BookReader::reasons(int count, std::vector<Reason> &reasons) const
{
    Statement row;
    const int code
        = row.prepare(m_database,
                      "SELECT kind, at, device, use, download, upload, seconds, text FROM"
                      " (SELECT * FROM reason ORDER BY id DESC LIMIT ?1) ORDER BY id");
    if (code != SQLITE_OK)
        return code;
    row.bind(1, count);
    return each(row, [&] {
        reasons.push_back({ static_cast<ReasonKind>(number(row, 0)), row.integer(1), row.text(2),
                            use(row, 3), row.integer(4), row.integer(5), row.integer(6),
                            row.text(7) });
    });
}

int BookReader::settings(std::map<std::string, std::string> &settings) const
{
    Statement row;
    const int code = row.prepare(m_database, "SELECT name, value FROM setting");
    if (code != SQLITE_OK)
        return code;
    return each(row, [&] { settings[row.text(0)] = row.text(1); });
}

int BookReader::lastReset(int type, std::int64_t &at) const
{
    Statement row;
    const int code = row.prepare(m_database, "SELECT at FROM reset WHERE type = ?1");
    if (code != SQLITE_OK)
        return code;
    row.bind(1, type);
    return each(row, [&] { at = row.integer(0); });
}

} // namespace velq
