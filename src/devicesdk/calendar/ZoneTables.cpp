#include "calendar/ZoneTables.h"

#include <array>
#include <cstdlib>

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

std::int64_t signedAt(const std::string &bytes, std::size_t at, std::size_t size)
{
    const std::uint64_t number = numberAt(bytes, at, size);
    return size == kOldInstantSize ? static_cast<std::int32_t>(static_cast<std::uint32_t>(number))
                                   : static_cast<std::int64_t>(number);
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

//! The tables of a block: instants, a type for each, and the types, the first of them for before.
std::optional<ZoneTables> tablesOf(const std::string &bytes, const Block &block,
                                   std::size_t instantSize)
{
    constexpr std::int64_t kFarthest = std::int64_t(1) << 60; // so that sums stay within 64 bits
    constexpr std::int64_t kDaySeconds = 86400; // no zone is a whole day off
    const std::size_t changes = block.counts[Changes];
    const std::size_t indexes = block.begin + changes * instantSize;
    std::vector<int> offsets;
    for (std::size_t type = 0; type < block.counts[Types]; ++type) {
        const std::int64_t offset = signedAt(bytes, indexes + changes + type * kTypeSize, 4);
        if (std::llabs(offset) >= kDaySeconds)
            return std::nullopt;
        offsets.push_back(static_cast<int>(offset));
    }
    if (offsets.empty())
        return std::nullopt;
    ZoneTables tables { offsets.front(), {}, {} };
    for (std::size_t i = 0; i < changes; ++i) {
        const std::int64_t instant = signedAt(bytes, block.begin + i * instantSize, instantSize);
        const auto type = static_cast<unsigned char>(bytes[indexes + i]);
        const bool ordered = tables.changes.empty() || tables.changes.back().instant < instant;
        if (!ordered || instant < -kFarthest || instant > kFarthest || type >= offsets.size())
            return std::nullopt;
        tables.changes.push_back({ instant, offsets[type] });
    }
    return tables;
}

} // namespace

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
    auto tables = tablesOf(bytes, *block, old ? kOldInstantSize : kInstantSize);
    if (old || !tables)
        return tables;
    const std::size_t ruleEnd = bytes.find('\n', block->end + 1);
    if (bytes.size() == block->end || bytes[block->end] != '\n' || ruleEnd == std::string::npos)
        return std::nullopt;
    tables->rule = bytes.substr(block->end + 1, ruleEnd - block->end - 1);
    return tables;
}

} // namespace velq
