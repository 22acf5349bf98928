// Finds the files that belong to this command: beside it in a build folder, or where they are installed.
#pragma once

#include <string>

namespace ckscribe {

// Both return an absolute path. They throw RunFailure when there is no such file.
std::string PathOfLibrary();       // libckscribe.so
std::string PathOfAuditLibrary();  // see tool/audit

}  // namespace ckscribe
