// Writes text of the library to the host's standard output. Drops text that does not fit. Never blocks,
// unless another writer takes the room at the same moment. Never raises a signal. Bypasses the host's stdio
// buffer, which the host or its forked child would write later.
#pragma once

#include <string_view>

namespace ckscribe {

// `text` should be a short line: only for short texts does the system say whether there is room. Any thread
// may call it at any time.
void WriteToStandardOutput(std::string_view text);

}  // namespace ckscribe
