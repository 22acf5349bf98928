// This part of `ckscribe check` looks for other ways on which applications reach the target.
#pragma once

#include <string>

#include "tool/configuration/setup.h"

namespace ckscribe {

// Looks for the target in p11-kit's .module files. It recognises the library by its file's name.
void CheckP11Kit(Setup& setup, Findings& findings);

// Says which module an openssl.cnf names for an engine or provider of PKCS#11.
void CheckOpenSsl(Setup& setup, const std::string& file, Findings& findings);

// Says which modules the database of NSS in a directory (pkcs11.txt) names.
void CheckNss(Setup& setup, const std::string& directory, Findings& findings);

}  // namespace ckscribe
