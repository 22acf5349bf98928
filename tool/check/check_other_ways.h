// What `ckscribe check` says about other ways on which applications reach the target.
#pragma once

#include <string>

#include "tool/configuration/setup.h"

namespace ckscribe {

// Looks through p11-kit's .module files for the target. The library is told by its file's name.
void CheckP11Kit(Setup& setup, Findings& findings);

// Tells which module an openssl.cnf names for an engine or provider of PKCS#11.
void CheckOpenSsl(Setup& setup, const std::string& file, Findings& findings);

// Tells which modules the database of NSS in a directory (pkcs11.txt) names.
void CheckNss(Setup& setup, const std::string& directory, Findings& findings);

}  // namespace ckscribe
