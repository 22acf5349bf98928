// The limit of the size of files that a process has (RLIMIT_FSIZE).
//
// A write that begins at the limit raises SIGXFSZ. SignalShield keeps it from the calling thread, which is
// enough on Linux; FreeBSD sends it to the process, whose other threads may take it. So what exceeds the
// limit is better not written at all.
#pragma once

#include <string_view>

namespace ckscribe {

bool IsFileSizeLimited();

// As much of the beginning of `text` as may be written to `descriptor` now; all of it where there is no limit
// or no regular file.
std::string_view WithinFileSizeLimit(int descriptor, std::string_view text);

}  // namespace ckscribe
