// Words of the library on the host's standard output. It is the host's: what it has no room for is left out,
// so that nothing waits unless somebody else takes that room at the same moment; no signal reaches the host;
// and nothing stays in the host's own buffer, from which the host, or a child that it forks, would write it
// at a time of theirs.
#pragma once

#include <string_view>

namespace ckscribe {

// `text` should be short, a line: what a pipe or a terminal has room for is told for short texts alone. Any
// thread may call it at any time.
void WriteToStandardOutput(std::string_view text);

}  // namespace ckscribe
