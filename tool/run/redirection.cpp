#include "tool/run/redirection.h"

#include <fmt/core.h>

#include <cstdlib>
#include <string_view>

#include "tool/run/installed_files.h"
#include "tool/run/run_failure.h"

namespace ckscribe {

#if defined(__FreeBSD__)

// The loader replaces names: the module's name with and without its directory. libckscribe.so loads its
// target by another name, that of the link in the private directory.
Redirection RedirectionFor(const ModuleChoice& choice, const std::string& library) {
    if (choice.kind != ModuleChoice::Kind::kFile)
        throw RunFailure("On this system the module has to be known: name it with -m PATH.");
    const std::string& module = choice.text;
    if ((module + library).find_first_of(",=") != std::string::npos)
        throw RunFailure(fmt::format(
            "The loader cannot exchange {} for {}: a comma or an equals sign is in them.", module, library));
    const std::string name = module.substr(module.rfind('/') + 1);
    std::string exchanges = fmt::format("{}={},{}={}", module, library, name, library);
    if (const char* const others = std::getenv("LD_LIBMAP")) exchanges.append(",").append(others);
    return {"LD_LIBMAP", exchanges};
}

#else

namespace {

constexpr char kAuditVariable[] = "LD_AUDIT";

}  // namespace

// The loader asks our audit library first. Other audit libraries stay, except that of a run around this one.
Redirection RedirectionFor(const ModuleChoice&, const std::string&) {
    std::string list = PathOfAuditLibrary();
    if (list.find_first_of(":$") != std::string::npos)
        throw RunFailure(
            fmt::format("The loader cannot be given {}: a colon or a dollar sign is in it.", list));
    const char* const variable = std::getenv(kAuditVariable);
    for (std::string_view others = variable != nullptr ? variable : ""; !others.empty();) {
        const std::string_view each = others.substr(0, others.find(':'));
        if (!each.empty() && !each.ends_with("/libckscribe-audit.so")) list.append(":").append(each);
        others.remove_prefix(each.size() < others.size() ? each.size() + 1 : each.size());
    }
    return {kAuditVariable, list};
}

#endif

}  // namespace ckscribe
