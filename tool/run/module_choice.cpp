#include "tool/run/module_choice.h"

#include <fmt/core.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "tool/run/elf_file.h"
#include "tool/run/run_failure.h"

namespace ckscribe {

namespace {

namespace fs = std::filesystem;

bool IsModule(const std::string& path) {
    const ModuleKind kind = KindOfModule(path);
    return kind != ModuleKind::kNone && kind != ModuleKind::kOurs;
}

std::string Absolute(const std::string& path) {
    std::error_code ignored;
    return fs::absolute(path, ignored);
}

bool LooksLikeName(std::string_view word) {
    return word.find('/') == std::string_view::npos &&
           (word.ends_with(".so") || word.find(".so.") != std::string_view::npos);
}

// Returns the folders in which a loader, or p11-kit, looks for a name without a slash.
std::vector<fs::path> LibraryFolders() {
    std::vector<fs::path> folders;
    const char* const variable = std::getenv("LD_LIBRARY_PATH");
    for (std::string_view path = variable != nullptr ? variable : ""; !path.empty();) {
        const std::string_view folder = path.substr(0, path.find_first_of(":;"));
        if (!folder.empty()) folders.emplace_back(folder);
        path.remove_prefix(folder.size() < path.size() ? folder.size() + 1 : path.size());
    }
    for (const char* const root : {"/usr/local/lib", "/usr/lib", "/usr/lib64", "/lib", "/lib64"}) {
        folders.emplace_back(root);
        std::error_code ignored;
        for (const fs::directory_entry& each : fs::directory_iterator(root, ignored))
            if (each.path().filename().string().ends_with("-linux-gnu")) folders.push_back(each.path());
    }
    return folders;
}

bool IsNameOfModule(const std::string& name) {
    for (const fs::path& folder : LibraryFolders())
        if (IsModule(folder / name) || IsModule(folder / "pkcs11" / name)) return true;
    return false;
}

// Returns the parts of an argument that may be a path: the whole argument, the part behind each "=", and the
// part behind the letter of an option. Each ends at a character that ends a value.
std::vector<std::string> PathsIn(const std::string& argument) {
    std::vector<std::string_view> beginnings{argument};
    if (argument.size() > 2 && argument[0] == '-' && argument[1] != '-')
        beginnings.push_back(std::string_view(argument).substr(2));
    for (std::size_t at = argument.find('='); at != std::string::npos; at = argument.find('=', at + 1))
        beginnings.push_back(std::string_view(argument).substr(at + 1));

    std::vector<std::string> paths;
    for (const std::string_view each : beginnings) {
        paths.emplace_back(each);
        const std::size_t end = each.find_first_of(";&?, \n");
        if (end != std::string_view::npos) paths.emplace_back(each.substr(0, end));
    }
    return paths;
}

}  // namespace

ModuleChoice ChooseModule(const std::string& option, const std::vector<std::string>& command) {
    using enum ModuleChoice::Kind;
    if (!option.empty()) {
        if (LooksLikeName(option) && !fs::exists(option)) return {kName, option};
        if (KindOfModule(option) == ModuleKind::kOurs)
            throw RunFailure(
                fmt::format("{} is libckscribe.so itself. -m names the module that it is to log.", option));
        if (!IsModule(option))
            throw RunFailure(fmt::format(
                "{} is no PKCS#11 module for this machine: it {}. -m needs a file that the command loads.",
                option, fs::exists(option) ? "defines no C_GetFunctionList" : "is not there"));
        return {kFile, Absolute(option)};
    }
    for (std::size_t i = 1; i < command.size(); ++i) {
        for (const std::string& path : PathsIn(command[i])) {
            if (path.find('/') != std::string::npos && IsModule(path)) return {kFile, Absolute(path)};
            if (LooksLikeName(path) && IsNameOfModule(path)) return {kName, path};
        }
    }
    return {};
}

}  // namespace ckscribe
