#include "host/standard_output.h"

#include <unistd.h>

#include "host/file_size_limit.h"
#include "host/signal_shield.h"
#include "host/uncancelled_io.h"

namespace ckscribe {

void WriteToStandardOutput(std::string_view text) {
    pollfd room = {STDOUT_FILENO, POLLOUT, 0};
    if (PollUncancelled(&room, 1, 0) != 1 || (room.revents & POLLOUT) == 0) return;
    const SignalShield shield;
    text = WithinFileSizeLimit(STDOUT_FILENO, text);
    if (!text.empty()) WriteUncancelled(STDOUT_FILENO, text.data(), text.size());
}

}  // namespace ckscribe
