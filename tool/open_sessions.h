// Follows which sessions were opened and not closed. Sessions are known by process and handle.
//
// Used by one thread at a time.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "tool/call_roles.h"
#include "tool/report_data.h"

namespace ckscribe {

class OpenSessions {
public:
    // Takes a call that worked, of one of the roles that open or close sessions; others change nothing.
    // `call` is kept of the call that opens a session.
    void Take(CallRole role, std::optional<std::uint64_t> slot, const ReportedCall& call);

    std::uint64_t Opened() const { return opened; }
    std::uint64_t Closed() const { return closed; }

    struct Handle {
        std::uint32_t process = 0;
        std::uint64_t session = 0;
        friend auto operator<=>(const Handle&, const Handle&) = default;
    };
    struct Session {
        std::uint64_t slot = 0;
        ReportedCall call;
    };
    // Those that are open now.
    std::map<Handle, Session>& Open() { return open; }

private:
    std::map<Handle, Session> open;
    std::uint64_t opened = 0;
    std::uint64_t closed = 0;
};

}  // namespace ckscribe
