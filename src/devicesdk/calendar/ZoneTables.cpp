#include "calendar/ZoneTables.h"

#include <array>
#include <utility>

namespace velq {

namespace {

// A file is a header and tables as long as its counts say. A file with a version has that twice,
// the first time with instants of 4 bytes, the second time with 8 and a rule between two line ends
// behind. Numbers are big-endian.
constexpr char kMagic[] = "TZif";
constexpr std::size_t kMagicLength = 4;
constexpr std::size_t kVersionAt = 4;
constexpr std::size_t kCountsAt = 20;
constexpr std::size_t kHeaderLength = 44;
constexpr std::size_t kTypeSize = 6;
constexpr std::size_t kInstantSize = 8;
constexpr std::size_t kOldInstantSize = 4;

enum Count { UtcFlags, StandardFlags, LeapSeconds, Changes, Types, NameBytes, kCounts };
using Counts = std::array<std::uint64_t, kCounts>;

std::uint64_t numberAt(const std::string &bytes, std::size_t at, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

void append(std::string &bytes, std::uint64_t number, std::size_t size)
{
    for (std::size_t i = size; i-- > 0;)
        bytes += static_cast<char>(number >> (8 * i) & 0xff);
}

/*! One header and its tables. */
struct Block
{
    Counts counts {};
    std::size_t begin = 0; // of the tables
    std::size_t end = 0;
};

std::optional<Block> blockAt(const std::string &bytes, std::size_t at, std::size_t instantSize)
{
    constexpr std::size_t kCorrectionSize = 4;
    if (bytes.size() < at + kHeaderLength || bytes.compare(at, kMagicLength, kMagic) != 0)
        return std::nullopt;
    Block block;
    for (std::size_t i = 0; i < kCounts; ++i)
        block.counts[i] = numberAt(bytes, at + kCountsAt + 4 * i, 4);
    const Counts &counts = block.counts;
    const std::uint64_t length = counts[Changes] * (instantSize + 1) + counts[Types] * kTypeSize
        + counts[NameBytes] + counts[LeapSeconds] * (instantSize + kCorrectionSize)
        + counts[StandardFlags] + counts[UtcFlags];
    block.begin = at + kHeaderLength;
    if (length > bytes.size() - block.begin)
        return std::nullopt;
    block.end = block.begin + length;
    return block;
}

ZoneTables tablesOf(const std::string &bytes, const Block &block, std::size_t instantSize)
{
    ZoneTables tables;
    std::size_t at = block.begin;
    const auto take = [&](std::size_t length) {
        at += length;
        return bytes.substr(at - length, length);
    };
    tables.instants = take(block.counts[Changes] * instantSize);
    tables.indexes = take(block.counts[Changes]);
    tables.types = take(block.counts[Types] * kTypeSize);
    tables.names = take(block.counts[NameBytes]);
    return tables;
}

std::string widened(const std::string &instants)
{
    std::string wide;
    for (std::size_t at = 0; at < instants.size(); at += kOldInstantSize) {
        const auto number = static_cast<std::uint32_t>(numberAt(instants, at, kOldInstantSize));
        append(wide, static_cast<std::uint64_t>(std::int64_t(static_cast<std::int32_t>(number))),
               kInstantSize);
    }
    return wide;
}

void appendHeader(std::string &bytes, const Counts &counts)
{
    bytes += kMagic;
    bytes += '2';
    bytes.append(kCountsAt - kVersionAt - 1, '\0');
    for (const std::uint64_t count : counts)
        append(bytes, count, 4);
}

} // namespace

std::size_t ZoneTables::typeCount() const
{
    return types.size() / kTypeSize;
}

void ZoneTables::addType(int offset, bool summer)
{
    append(types, static_cast<std::uint32_t>(offset), 4);
    append(types, summer ? 1 : 0, 1);
    append(types, 0, 1); // where its name is: nobody asks for that
}

void ZoneTables::addChange(std::int64_t instant, std::size_t type)
{
    append(instants, static_cast<std::uint64_t>(instant), kInstantSize);
    append(indexes, type, 1);
}

std::int64_t ZoneTables::lastChange() const
{
    if (instants.empty())
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(
        numberAt(instants, instants.size() - kInstantSize, kInstantSize));
}

std::optional<ZoneTables> readZoneTables(const std::string &bytes)
{
    const auto first = blockAt(bytes, 0, kOldInstantSize);
    if (!first)
        return std::nullopt;
    const bool old = bytes[kVersionAt] == '\0';
    const auto block = old ? first : blockAt(bytes, first->end, kInstantSize);
    // With leap seconds the file would speak of another clock than the system's.
    if (!block || block->counts[LeapSeconds] > 0)
        return std::nullopt;
    ZoneTables tables = tablesOf(bytes, *block, old ? kOldInstantSize : kInstantSize);
    if (old) {
        tables.instants = widened(tables.instants);
        return tables;
    }
    const std::size_t ruleEnd = bytes.find('\n', block->end + 1);
    if (bytes.size() == block->end || bytes[block->end] != '\n' || ruleEnd == std::string::npos)
        return std::nullopt;
    tables.rule = bytes.substr(block->end + 1, ruleEnd - block->end - 1);
    return tables;
}

std::string zoneBytes(const ZoneTables &tables)
{
    std::string bytes;
    appendHeader(bytes, {}); // who knows only short instants finds nothing
    appendHeader(bytes,
                 { 0, 0, 0, tables.indexes.size(), tables.typeCount(), tables.names.size() });
    return bytes + tables.instants + tables.indexes + tables.types + tables.names + '\n'
        + tables.rule + '\n';
}

} // namespace velq
