#include "tool/open_sessions.h"

namespace ckscribe {

void OpenSessions::Take(CallRole role, std::optional<std::uint64_t> slot, const ReportedCall& call) {
    const Handle handle{call.process, call.session.value_or(0)};
    switch (role) {
        case CallRole::kOpenSession:
            if (!call.session) return;
            ++opened;
            open[handle] = {slot.value_or(0), call};
            return;
        case CallRole::kCloseSession:
            closed += open.erase(handle);
            return;
        case CallRole::kCloseAllSessions:
        case CallRole::kFinalize:
            closed += std::erase_if(open, [&](const auto& one) {
                return one.first.process == call.process &&
                       (role == CallRole::kFinalize || one.second.slot == slot);
            });
            return;
        default:
            return;
    }
}

}  // namespace ckscribe
