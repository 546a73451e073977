#include "ExitCode.h"

#include <host/velq_extension.h>

namespace velqctl {

namespace {

constexpr const char *kNoService
    = "there is no NetworkManager on the system bus; start it, or use the tool that manages this "
      "connection";
constexpr const char *kNotManaged
    = "NetworkManager does not control this device; use the tool that does";
constexpr const char *kRefused
    = "this user is not permitted to; run it as root, or log in at the computer itself";

} // namespace

Outcome disconnectOutcome(int result)
{
    switch (result) {
    case VELQ_DISCONNECT_DONE:
        return {};
    case VELQ_DISCONNECT_NO_CONNECTION:
        return { ExitCode::NothingThere, {}, "nothing is connected" };
    case VELQ_DISCONNECT_NO_SERVICE:
        return { ExitCode::NoService, {}, kNoService };
    case VELQ_DISCONNECT_NOT_MANAGED:
        return { ExitCode::NoService, {}, kNotManaged };
    case VELQ_DISCONNECT_REFUSED:
        return { ExitCode::NotPermitted, {}, kRefused };
    default:
        return { ExitCode::Failed,
                 {},
                 "the connection could not be taken down; look at NetworkManager's journal" };
    }
}

Outcome connectOutcome(int result)
{
    switch (result) {
    case VELQ_CONNECT_DONE:
        return {};
    case VELQ_CONNECT_NO_DEVICE:
        return { ExitCode::NothingThere,
                 {},
                 "there is no device to connect; name one with \"velqctl use DEVICE\"" };
    case VELQ_CONNECT_NO_PROFILE:
        return { ExitCode::NothingThere,
                 {},
                 "NetworkManager has no connection for this device; add one, then try again" };
    case VELQ_CONNECT_NO_SERVICE:
        return { ExitCode::NoService, {}, kNoService };
    case VELQ_CONNECT_NOT_MANAGED:
        return { ExitCode::NoService, {}, kNotManaged };
    case VELQ_CONNECT_REFUSED:
        return { ExitCode::NotPermitted, {}, kRefused };
    default:
        return { ExitCode::Failed,
                 {},
                 "the connection did not come up; look at NetworkManager's journal" };
    }
}

Outcome readOnlyOutcome(const StoreState &store)
{
    return { ExitCode::ReadOnly,
             {},
             "another process counts into " + store.path
                 + "; make the change there, or end it and try again" };
}

Outcome withStoreProblem(Outcome outcome, const StoreState &store)
{
    if (outcome.code != ExitCode::Good || !store.counting || store.problem.empty())
        return outcome;
    outcome.code = ExitCode::Failed;
    outcome.message = store.problem;
    return outcome;
}

} // namespace velqctl
