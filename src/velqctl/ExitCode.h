#pragma once

#include <string>

namespace velqctl {

//! What the program answers to a script. Documented in velqctl(1).
enum class ExitCode {
    Good = 0,
    Failed = 1,
    Usage = 2,
    ReadOnly = 3, //!< another process counts, and only that one can change the books
    NothingThere = 4, //!< nothing is connected, no such device, or nothing to connect it with
    NoService = 5, //!< no NetworkManager that controls the device
    NotPermitted = 6
};

//! What became of a command.
struct Outcome
{
    ExitCode code = ExitCode::Good;
    std::string output; //!< for the standard output, whole lines
    std::string message; //!< for the standard error, without an end of line
};

//! Of a VELQ_DISCONNECT_ value: the code, and what to do next.
[[nodiscard]] Outcome disconnectOutcome(int result);
//! Of a VELQ_CONNECT_ value.
[[nodiscard]] Outcome connectOutcome(int result);

/*! How the store is. */
struct StoreState
{
    bool counting = true; //!< this process counts
    std::string path;
    std::string problem; //!< in words; also while another process counts
};

//! Another process counts, so that nothing can be changed here.
[[nodiscard]] Outcome readOnlyOutcome(const StoreState &store);
//! \a outcome, or a failure when the store has a problem although it is this process's.
[[nodiscard]] Outcome withStoreProblem(Outcome outcome, const StoreState &store);

} // namespace velqctl
