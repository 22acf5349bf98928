// Text of the library on the host's standard output. Best effort: text that does not fit is dropped. It
// never blocks, unless another writer takes the room at the same moment. It never raises a signal. It
// bypasses the host's stdio buffer, which the host or its forked child would write later.
#pragma once

#include <string_view>

namespace ckscribe {

// `text` should be a short line: only for short texts does the system say whether there is room. Any thread
// may call it at any time.
void WriteToStandardOutput(std::string_view text);

}  // namespace ckscribe
