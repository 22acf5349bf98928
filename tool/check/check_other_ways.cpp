#include "tool/check/check_other_ways.h"

#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "util/without_blanks.h"

namespace ckscribe {

namespace {

namespace fs = std::filesystem;

constexpr char kP11KitFolder[] = CKSCRIBE_P11_KIT_MODULES;

// A NamedModule is the path of a module's library, with the line that names it.
struct NamedModule {
    std::string path;
    int line;
};

// Returns the values of the lines "KEY = VALUE" (or "KEY: VALUE") whose key is one of `keys`.
std::vector<NamedModule> ModulesIn(const std::string& file, const std::vector<std::string_view>& keys,
                                   char sign) {
    std::vector<NamedModule> modules;
    std::ifstream text(file);
    int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        const std::size_t place = line.find(sign);
        if (place == line.npos) continue;
        const std::string_view key = WithoutBlanks(std::string_view(line).substr(0, place));
        if (std::ranges::find(keys, key) == keys.end()) continue;
        modules.push_back({std::string(WithoutBlanks(std::string_view(line).substr(place + 1))), number});
    }
    return modules;
}

bool IsSameFile(const std::string& one, const std::string& other) {
    std::error_code ignored;
    return fs::equivalent(one, other, ignored);
}

bool IsCkscribe(const std::string& path) {
    std::error_code ignored;
    const fs::path real = fs::canonical(path, ignored);
    return fs::path(path).filename() == "libckscribe.so" || real.filename() == "libckscribe.so";
}

std::string TargetPath(Setup& setup) {
    const std::string path = setup.settings.CkLogLibraryFileName();
    return path.find('/') != path.npos ? path : std::string(kP11KitFolder) + "/" + path;
}

// p11-kit reads no folder of the user's in a process of root.
std::vector<std::string> ModuleFolders() {
    std::vector<std::string> folders;
    const char* const configurations = std::getenv("XDG_CONFIG_HOME");
    const char* const home = std::getenv("HOME");
    if (geteuid() != 0 && configurations != nullptr && *configurations == '/') {
        folders.push_back(std::string(configurations) + "/pkcs11/modules");
    } else if (geteuid() != 0 && home != nullptr) {
        folders.push_back(std::string(home) + "/.config/pkcs11/modules");
    }
    folders.push_back("/etc/pkcs11/modules");
    folders.push_back("/usr/share/p11-kit/modules");
    return folders;
}

std::vector<std::string> ModuleFiles() {
    std::vector<std::string> files;
    std::vector<std::string> names;
    for (const std::string& folder : ModuleFolders()) {
        std::error_code ignored;
        std::vector<std::string> here;
        for (const auto& entry : fs::directory_iterator(folder, ignored)) {
            // A file hides files of the same name in later folders.
            const std::string name = entry.path().filename();
            if (entry.path().extension() == ".module" && std::ranges::find(names, name) == names.end())
                here.push_back(name);
        }
        std::ranges::sort(here);
        for (const std::string& name : here) files.push_back(folder + "/" + name);
        names.insert(names.end(), here.begin(), here.end());
    }
    return files;
}

void TellModule(Setup& setup, std::string_view about, const std::string& file, const NamedModule& module,
                Findings& findings) {
    if (IsCkscribe(module.path)) {
        findings.Add(Level::kOk, about, 0, fmt::format("{}, line {}, names ckscribe.", file, module.line));
    } else if (IsSameFile(module.path, TargetPath(setup))) {
        findings.Add(Level::kNote, about, 0,
                     fmt::format("{}, line {}, names the target itself: those calls are not logged.", file,
                                 module.line),
                     "Name libckscribe.so there.");
    } else {
        findings.Add(Level::kOk, about, 0,
                     fmt::format("{}, line {}, names another module, {}.", file, module.line, module.path));
    }
}

// Returns whether the file gives its module only to some programs.
bool IsForSomePrograms(const std::string& file) {
    return !ModulesIn(file, {"enable-in", "disable-in"}, ':').empty();
}

}  // namespace

void CheckP11Kit(Setup& setup, Findings& findings) {
    std::string own;
    std::string targets;
    for (const std::string& file : ModuleFiles()) {
        for (const NamedModule& module : ModulesIn(file, {"module"}, ':')) {
            const std::string path =
                module.path.starts_with('/') ? module.path : std::string(kP11KitFolder) + "/" + module.path;
            if (IsCkscribe(path)) own = file;
            if (IsSameFile(path, TargetPath(setup))) targets = file;
        }
    }
    if (!own.empty() && !targets.empty() && (IsForSomePrograms(own) || IsForSomePrograms(targets))) {
        findings.Add(
            Level::kNote, "p11-kit", 0,
            fmt::format("{} names ckscribe and {} its target, and \"enable-in\" or \"disable-in\" says which "
                        "programs get them: none may get both.",
                        own, targets));
    } else if (!own.empty() && !targets.empty()) {
        findings.Add(Level::kWrong, "p11-kit", 0,
                     fmt::format("{} names ckscribe and {} its target: p11-kit loads the target twice, and "
                                 "may take the two for "
                                 "one and drop the second.",
                                 own, targets),
                     fmt::format("Hide the target's: an empty file /etc/pkcs11/modules/{}",
                                 fs::path(targets).filename().string()));
    } else if (!targets.empty()) {
        findings.Add(
            Level::kNote, "p11-kit", 0,
            fmt::format("{} names the target itself: what applications call through p11-kit is not logged.",
                        targets),
            "Put a ckscribe.module with the line \"module: libckscribe.so\" in its place to log that, too.");
    } else if (!own.empty()) {
        findings.Add(Level::kOk, "p11-kit", 0, fmt::format("{} names ckscribe.", own));
    }
}

void CheckOpenSsl(Setup& setup, const std::string& file, Findings& findings) {
    const auto modules = ModulesIn(file, {"MODULE_PATH", "pkcs11-module-path"}, '=');
    if (modules.empty())
        findings.Add(Level::kNote, "OpenSSL", 0,
                     fmt::format("{} has no line MODULE_PATH or pkcs11-module-path.", file),
                     "Name libckscribe.so there.");
    for (const NamedModule& module : modules) TellModule(setup, "OpenSSL", file, module, findings);
}

void CheckNss(Setup& setup, const std::string& directory, Findings& findings) {
    const std::string file = directory + "/pkcs11.txt";
    // The first module is NSS's own. It has no library.
    std::vector<NamedModule> modules = ModulesIn(file, {"library"}, '=');
    std::erase_if(modules, [](const NamedModule& module) { return module.path.empty(); });
    if (modules.empty())
        findings.Add(
            Level::kNote, "NSS", 0, fmt::format("{} names no library of a module.", file),
            fmt::format("modutil -dbdir sql:{} -add ckscribe -libfile /FOLDER/libckscribe.so", directory));
    for (const NamedModule& module : modules) TellModule(setup, "NSS", file, module, findings);
}

}  // namespace ckscribe
