#pragma once

#include <cstdint>
#include <string>

namespace velq {

/*! One look at a network link: what the kernel, or a script in its place, says about it. */
struct LinkReading
{
    int index = 0; //!< the kernel's number of the link; a re-created link may get a new one
    std::uint64_t generation = 0; //!< grows when a link was deleted: same index, other link
    std::string name;
    bool up = false; //!< administratively up, with carrier, able to carry traffic
    bool wireless = false;
    std::uint64_t download = 0; //!< bytes since the link was made
    std::uint64_t upload = 0;
};

enum class ReadStatus {
    Found, //!< the reading is valid
    Absent, //!< there is no such link at the moment
    Failed //!< nothing could be learnt this time; what was known stays
};

struct ReadResult
{
    ReadStatus status = ReadStatus::Absent;
    LinkReading link;
};

/*! Where byte counters come from. Used by one thread at a time. */
class CounterSource
{
public:
    virtual ~CounterSource() = default;
    //! Reads the link that is to be counted now.
    [[nodiscard]] virtual ReadResult readChosen() = 0;
    //! Reads the link \a index: the last look at one that is no longer the chosen one.
    [[nodiscard]] virtual ReadResult readIndex(int index) = 0;
    //! The counted link was disconnected on request: it is down until it connects anew, although
    //! the hardware may stay up.
    virtual void noteDisconnect() = 0;
};

} // namespace velq
