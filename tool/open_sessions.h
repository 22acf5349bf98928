// Follows which sessions were opened and not closed. Process and handle identify a session.
//
// One thread at a time may use it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "tool/call_roles.h"
#include "tool/report_data.h"

namespace ckscribe {

class OpenSessions {
public:
    // Takes a successful call. Only the roles that open or close sessions change something. Keeps `call` if
    // it opens a session.
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
    // Returns the sessions that are open now.
    std::map<Handle, Session>& Open() { return open; }

private:
    std::map<Handle, Session> open;
    std::uint64_t opened = 0;
    std::uint64_t closed = 0;
};

}  // namespace ckscribe
