#include "tool/run/private_directory.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <string_view>
#include <vector>

#include "config/logging_configuration.h"
#include "tool/audit/names.h"
#include "tool/run/elf_file.h"
#include "tool/run/run_failure.h"

namespace ckscribe {

namespace {

namespace fs = std::filesystem;

constexpr mode_t kOnlyUser = 0700;
constexpr mode_t kEntered = 0711;  // everybody who has the name of a file in there may enter
constexpr mode_t kListed = 0755;
constexpr mode_t kOnlyUsersFile = 0600;
constexpr mode_t kReadByOthers = 0644;
constexpr mode_t kWrittenByOthers = 0622;
constexpr char kTemplate[] = "/ckscribe-run.XXXXXX";
constexpr std::size_t kLengthOfUnguessableName = 17;  // with the slash

// kConfigurationVariable is cut after so many characters.
constexpr std::size_t kLongestDirectory = 256;

// Returns whether a configuration can name this path. No value holds ";", "}" or a line end, and the word in
// front of a "=" may count as another key.
bool CanBeConfigured(const std::string& path) {
    if (path.size() > kLongestDirectory || path.find_first_of(";}=") != std::string::npos) return false;
    for (const char each : path)
        if (static_cast<unsigned char>(each) < ' ') return false;
    return true;
}

// The file has these permissions whatever the umask is.
void WriteFile(const std::string& path, std::string_view text, mode_t permissions) {
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    const bool isWritten = descriptor >= 0 && fchmod(descriptor, permissions) == 0 &&
                           write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    const int error = errno;
    if (descriptor >= 0) close(descriptor);
    if (!isWritten) throw RunFailure(fmt::format("{} cannot be written: {}.", path, std::strerror(error)));
}

std::string MakeTemporaryDirectory() {
    std::vector<std::string> folders;
    if (const char* const variable = std::getenv("TMPDIR")) folders.emplace_back(variable);
    folders.insert(folders.end(), {"/tmp", "/var/tmp", "/dev/shm"});
    for (const std::string& folder : folders) {
        std::error_code error;
        std::string path = fs::canonical(folder, error).string() + kTemplate;
        if (!error && CanBeConfigured(path + std::string(kLengthOfUnguessableName, 'x')) &&
            mkdtemp(path.data()) != nullptr)
            return path;
    }
    throw RunFailure(
        "There is no directory for temporary files that can be written to. Set TMPDIR to one whose path has "
        "at most 210 characters and none of ; } =");
}

std::string MakeUnguessableDirectory(const std::string& folder) {
    std::random_device random;
    const std::string path = fmt::format("{}/{:08x}{:08x}", folder, random(), random());
    if (mkdir(path.c_str(), kOnlyUser) != 0 || chmod(path.c_str(), kListed) != 0 ||
        chmod(folder.c_str(), kEntered) != 0)
        throw RunFailure(fmt::format("{} cannot be made: {}.", path, std::strerror(errno)));
    return path;
}

std::string MakeKeptDirectory(const std::string& name) {
    std::error_code error;
    const bool isNew = fs::create_directories(name, error);
    const std::string path = fs::canonical(name, error);
    if (error) throw RunFailure(fmt::format("{} cannot be made: {}.", name, error.message()));
    if (!CanBeConfigured(path))
        throw RunFailure(
            fmt::format("--keep cannot use {}: a configuration can only name a path of at most {} characters "
                        "without ; }} and =",
                        path, kLongestDirectory));
    if (isNew) chmod(path.c_str(), kOnlyUser);
    if (fs::exists(path + kConfigurationFile))
        throw RunFailure(
            fmt::format("{} holds a Wendrafil.conf already. Give --keep an empty or a new directory.", name));
    return path;
}

bool HasText(const RunOptions& options) {
    return options.format == RunFormat::kText || options.format == RunFormat::kOld;
}

std::string Line(const char* key, std::string_view value) { return fmt::format("   {} = {};\n", key, value); }

}  // namespace

PrivateDirectory::PrivateDirectory(const std::string& kept)
    : folder_(kept.empty() ? MakeTemporaryDirectory() : ""),
      path_(kept.empty() ? MakeUnguessableDirectory(folder_) : MakeKeptDirectory(kept)),
      isKept_(!kept.empty()) {}

PrivateDirectory::~PrivateDirectory() {
    std::error_code ignored;
    if (!isKept_) {
        fs::remove_all(folder_, ignored);
        return;
    }
    for (const char* const name : {kSettingsFile, kNoticesFile, kTargetLink}) fs::remove(File(name), ignored);
}

void PrivateDirectory::Fill(const RunOptions& options, const ModuleChoice& choice, const std::string& library,
                            const std::string& ownTarget) {
    using enum ModuleChoice::Kind;
    std::string settings = fmt::format("{}{}\n", kLibrarySetting, library);
    if (choice.kind == kFile) settings += fmt::format("{}{}\n", kModuleSetting, choice.text);
    if (choice.kind == kName) settings += fmt::format("{}{}\n", kNameSetting, choice.text);
    if (choice.kind == kFirst) settings += fmt::format("{}\n", kFirstSetting);
    if (!ownTarget.empty()) settings += fmt::format("{}{}\n", kOwnTargetSetting, ownTarget);
    WriteFile(File(kSettingsFile), settings, isKept_ ? kOnlyUsersFile : kReadByOthers);
    WriteFile(File(kNoticesFile), "", isKept_ ? kOnlyUsersFile : kWrittenByOthers);
    if (!isKept_) MakeLogs(options);
    // If the file is known, the configuration also works outside the run.
    std::error_code ignored;
    if (choice.kind == kFile) fs::create_symlink(choice.text, File(kTargetLink), ignored);
    WriteConfiguration(options, File(kTargetLink));
}

void PrivateDirectory::MakeLogs(const RunOptions& options) const {
    if (HasText(options)) WriteFile(File(kLogFile), "", kWrittenByOthers);
    for (const char* const name : {kErrorFile, kEventsFile}) WriteFile(File(name), "", kWrittenByOthers);
}

void PrivateDirectory::WriteConfiguration(const RunOptions& options, const std::string& target) const {
    std::string text = "CkLog2 = {\n";
    text += Line("LibUNIX64", target);
    text += Line("Enabled", HasText(options) ? "1" : "0");
    text += Line("NewFormat", options.format == RunFormat::kOld ? "0" : "1");
    if (!options.mask.empty()) text += Line("LoggingMask", options.mask);
    text += Line("File", File(kLogFile));
    text += Line("Error", File(kErrorFile));
    text += Line("Events", File(kEventsFile));
    text += Line("FileMode", "0600");
    text += Line("HideData", options.showsData ? "0" : "1");
    text += Line("Announce", "0");
    text += "}\n";
    WriteFile(File(kConfigurationFile), text, isKept_ ? kOnlyUsersFile : kReadByOthers);
}

void PrivateDirectory::NameTarget(const std::string& module) {
    // The configuration store changes the file as it does for any other program.
    class Store : public WendrafilConfiguration {
    public:
        explicit Store(std::string path) : path_(std::move(path)) {}
        const char* GetConfFileName() const override { return path_.c_str(); }

    private:
        std::string path_;
    };
    if (isKept_) Store(File(kConfigurationFile)).SetEntry("CkLog2", "LibUNIX64", module.c_str());
}

std::string TargetOfOwnConfiguration() {
    char path[CkLogConfig::kLongestPath + 1] = {};
    const WendrafilConfiguration store;
    const bool isThere =
        store.GetConfigurationEntry(CkLogConfig::GetCkLogSectionName(), "LibUNIX64", path, sizeof path) != 0;
    return isThere && KindOfModule(path) != ModuleKind::kOurs ? path : "";
}

}  // namespace ckscribe
