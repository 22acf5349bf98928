#include "tool/fleet/shipping_state.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <numeric>

#include "tool/file_access.h"
#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

using Json = nlohmann::ordered_json;

// A content that no file has had for so many seconds is forgotten.
constexpr std::int64_t kForgottenAfter = 30 * 86'400;

[[noreturn]] void Fail(const std::string& path, std::string_view what) {
    throw StateError(fmt::format("{}: {}", Harmless(path), what));
}

[[noreturn]] void FailBySystem(const std::string& path, std::string_view what) {
    Fail(path, fmt::format("{}: {}.", what, std::strerror(errno)));
}

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace

std::string FingerprintOf(std::string_view bytes) {
    // FNV-1a over the bytes in both directions.
    constexpr std::uint64_t kBegin = 0xcbf29ce484222325;
    const auto add = [](std::uint64_t hash, char byte) {
        return (hash ^ static_cast<unsigned char>(byte)) * 0x00000100000001b3;
    };
    const std::uint64_t forwards = std::accumulate(bytes.begin(), bytes.end(), kBegin, add);
    const std::uint64_t backwards = std::accumulate(bytes.rbegin(), bytes.rend(), kBegin, add);
    return fmt::format("{:016x}{:016x}", forwards, backwards);
}

ShippingState::ShippingState(std::string file, const std::string& name) : path(std::move(file)), host(name) {
    // The state file is replaced as a whole; a lock on it would be lost. Therefore another file is locked.
    const std::string lockPath = path + ".lock";
    lock = open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (lock < 0) FailBySystem(lockPath, "it cannot be opened");
    if (flock(lock, LOCK_EX | LOCK_NB) != 0) {
        close(lock);
        Fail(path, "another ckscribe convert works with this state.");
    }
    try {
        Read();
    } catch (...) {
        close(lock);
        throw;
    }
}

ShippingState::~ShippingState() {
    if (lock >= 0) close(lock);
}

void ShippingState::Read() {
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) {
        if (errno == ENOENT) return;
        FailBySystem(path, "it cannot be read");
    }
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (file.bad()) FailBySystem(path, "it cannot be read");
    if (text.empty()) return;
    try {
        const Json json = Json::parse(text);
        const std::string owner = json.at("host").get<std::string>();
        if (owner != host)
            Fail(path, fmt::format("it is the state of host \"{}\". Name another file with --state.",
                                   Harmless(owner)));
        for (const Json& content : json.at("contents")) {
            contents[content.at("first").get<std::string>()] = {
                content.at("offset").get<std::uint64_t>(), content.at("tail").get<std::string>(),
                content.at("position").get<std::uint64_t>(), content.at("seen").get<std::int64_t>()};
        }
        for (const Json& stamp : json.at("done")) doneFiles.insert(stamp.get<std::string>());
    } catch (const Json::exception&) {
        Fail(path,
             "it is no state of ckscribe. If it is damaged, remove it: all files are read again, and every "
             "call still "
             "counts once.");
    }
}

ShippedContent& ShippingState::ContentOf(const std::string& fingerprint) {
    ShippedContent& content = contents[fingerprint];
    content.seen = std::time(nullptr);
    return content;
}

bool ShippingState::IsDone(const std::string& stamp) {
    if (!doneFiles.contains(stamp)) return false;
    doneFilesOfRun.insert(stamp);
    return true;
}

void ShippingState::SetDone(const std::string& stamp) {
    doneFiles.insert(stamp);
    doneFilesOfRun.insert(stamp);
}

void ShippingState::ForgetUnused() {
    const std::int64_t oldest = std::time(nullptr) - kForgottenAfter;
    std::erase_if(contents, [oldest](const auto& entry) { return entry.second.seen < oldest; });
    doneFiles = doneFilesOfRun;
}

void ShippingState::Save() {
    Json json;
    json["host"] = host;
    json["contents"] = Json::array();
    for (const auto& [first, content] : contents)
        json["contents"].push_back({{"first", first},
                                    {"offset", content.offset},
                                    {"tail", content.tail},
                                    {"position", content.position},
                                    {"seen", content.seen}});
    json["done"] = doneFiles;
    const std::string text = json.dump(1) + "\n";
    if (text == saved) return;

    const std::string next = path + ".new";
    const int file = open(next.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) FailBySystem(next, "it cannot be written");
    const bool isWritten = WriteAll(file, text) && fsync(file) == 0;
    const int error = errno;
    close(file);
    errno = error;
    if (!isWritten) FailBySystem(next, "it cannot be written");
    if (std::rename(next.c_str(), path.c_str()) != 0) FailBySystem(path, "it cannot be replaced");
    saved = text;
}

}  // namespace ckscribe
