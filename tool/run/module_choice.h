// Chooses the module of the command that is logged.
#pragma once

#include <string>
#include <vector>

namespace ckscribe {

struct ModuleChoice {
    enum class Kind {
        kFile,   // this file, under whatever name a process loads it
        kName,   // the first module whose file has this name
        kFirst,  // in each process the first module that it loads
    };
    Kind kind = Kind::kFirst;
    std::string text;  // an absolute path, a name, or nothing
};

// Returns the module of `-m` if that is not empty. Otherwise it returns the module that an argument names, as
// the whole argument or as a part of it ("--module=/usr/lib/x.so", "-I/usr/lib/x.so",
// "pkcs11:module-path=/usr/lib/x.so"). Throws RunFailure when the file of `-m` is no module.
ModuleChoice ChooseModule(const std::string& option, const std::vector<std::string>& command);

}  // namespace ckscribe
