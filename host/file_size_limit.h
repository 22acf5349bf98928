// Asks for the limit of the size of files that a process has (RLIMIT_FSIZE).
//
// A write that begins at the limit raises SIGXFSZ. SignalShield keeps it from the calling thread. That is
// enough on Linux; FreeBSD sends the signal to the process, whose other threads may take it. It is better
// not to write beyond the limit at all.
#pragma once

#include <string_view>

namespace ckscribe {

bool IsFileSizeLimited();

// Returns the beginning of `text` that may be written to `descriptor` now. That is all of the text if there
// is no limit or no regular file.
std::string_view WithinFileSizeLimit(int descriptor, std::string_view text);

}  // namespace ckscribe
