// Which module of the command is logged.
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

// The module of `-m`, when that is not empty; else one that an argument names, alone or as a part
// ("--module=/usr/lib/x.so", "-I/usr/lib/x.so", "pkcs11:module-path=/usr/lib/x.so"). Throws RunFailure when
// the file of
// `-m` is no module.
ModuleChoice ChooseModule(const std::string& option, const std::vector<std::string>& command);

}  // namespace ckscribe
