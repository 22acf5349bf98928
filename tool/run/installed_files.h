// Where the files lie that belong to this command: beside it in a build folder, or where they are installed.
#pragma once

#include <string>

namespace ckscribe {

// Both are absolute. Throw RunFailure when there is no such file.
std::string PathOfLibrary();       // libckscribe.so
std::string PathOfAuditLibrary();  // see tool/audit

}  // namespace ckscribe
