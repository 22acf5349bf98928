#include "reader/log_source.h"

#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <string_view>
#include <vector>

namespace ckscribe {

struct LogSource::Unpacker {
    archive* stream = archive_read_new();
    std::vector<char> block = std::vector<char>(256 << 10);
    bool isBegun = false;

    ~Unpacker() { archive_read_free(stream); }
};

namespace {

using std::string_view_literals::operator""sv;

constexpr std::size_t kHead = 8;

bool HasMagic(std::string_view head) {
    for (const std::string_view magic : {"\x1f\x8b"sv,
                                         "\xfd"
                                         "7zXZ\0"sv,
                                         "\x28\xb5\x2f\xfd"sv, "BZh"sv}) {
        if (head.starts_with(magic)) return true;
    }
    return false;
}

}  // namespace

LogSource::LogSource() = default;
LogSource::~LogSource() { Close(); }

void LogSource::Close() {
    unpacker.reset();
    if (descriptor > STDIN_FILENO) close(descriptor);
    descriptor = -1;
}

bool LogSource::Open(const std::string& path) {
    Close();
    error.clear();
    bytesRead = size = 0;
    const bool isStandardInput = path == "-";
    descriptor = isStandardInput ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0) {
        error = std::strerror(errno);
        return false;
    }
    if (S_ISDIR(status.st_mode)) {
        error = std::strerror(EISDIR);
        return false;
    }
    if (S_ISREG(status.st_mode)) {
        size = static_cast<std::uint64_t>(status.st_size);
        writtenAt = status.st_mtime;
        posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
    } else {
        writtenAt = std::time(nullptr);
    }
    return Begin();
}

// Reads enough to see whether the file is packed.
bool LogSource::Begin() {
    head.resize(kHead);
    std::size_t count = 0;
    while (count < kHead) {
        const std::size_t more = ReadFile(head.data() + count, kHead - count);
        if (more == 0) break;
        count += more;
    }
    head.resize(count);
    if (!HasMagic(head)) return error.empty();

    unpacker = std::make_unique<Unpacker>();
    archive_read_support_filter_all(unpacker->stream);
    archive_read_support_format_raw(unpacker->stream);
    archive_read_support_format_empty(unpacker->stream);
    archive_entry* entry = nullptr;
    const int opened = archive_read_open(unpacker->stream, this, nullptr, ReadForUnpacker, nullptr);
    if (opened != ARCHIVE_OK || archive_read_next_header(unpacker->stream, &entry) < ARCHIVE_WARN) {
        const char* const reason = archive_error_string(unpacker->stream);
        error = reason != nullptr ? reason : "it cannot be unpacked";
        return false;
    }
    return true;
}

std::size_t LogSource::ReadFile(char* bytes, std::size_t count) {
    while (true) {
        const ssize_t got = read(descriptor, bytes, count);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) error = std::strerror(errno);
        if (got <= 0) return 0;
        bytesRead += static_cast<std::uint64_t>(got);
        return static_cast<std::size_t>(got);
    }
}

bool LogSource::Rewind() {
    if (descriptor < 0 || lseek(descriptor, 0, SEEK_SET) != 0) return false;
    unpacker.reset();
    error.clear();
    bytesRead = 0;
    return Begin();
}

bool LogSource::Skip(std::uint64_t count) {
    const std::uint64_t buffered = unpacker == nullptr ? std::min<std::uint64_t>(count, head.size()) : 0;
    head.erase(0, buffered);
    count -= buffered;
    if (unpacker == nullptr) {
        struct stat status {};
        const off_t now = lseek(descriptor, 0, SEEK_CUR);
        if (now < 0 || fstat(descriptor, &status) != 0) return false;
        const off_t next = now + static_cast<off_t>(count);
        return next <= status.st_size && lseek(descriptor, next, SEEK_SET) == next;
    }
    std::vector<char> block(256 << 10);
    while (count != 0) {
        const std::size_t got = Read(block.data(), std::min<std::uint64_t>(count, block.size()));
        if (got == 0) return false;
        count -= got;
    }
    return true;
}

std::string LogSource::Stamp() const {
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0) return "";
    std::string stamp;
    for (const auto number :
         {static_cast<long long>(status.st_dev), static_cast<long long>(status.st_ino),
          static_cast<long long>(status.st_size), static_cast<long long>(status.st_mtim.tv_sec),
          static_cast<long long>(status.st_mtim.tv_nsec)})
        (stamp += std::to_string(number)) += ' ';
    return stamp;
}

long LogSource::ReadForUnpacker(archive*, void* self, const void** bytes) {
    auto* const source = static_cast<LogSource*>(self);
    Unpacker& unpacker = *source->unpacker;
    *bytes = unpacker.block.data();
    if (!unpacker.isBegun) {
        unpacker.isBegun = true;
        std::ranges::copy(source->head, unpacker.block.begin());
        return static_cast<long>(source->head.size());
    }
    return static_cast<long>(source->ReadFile(unpacker.block.data(), unpacker.block.size()));
}

std::size_t LogSource::Read(char* bytes, std::size_t count) {
    if (unpacker != nullptr) {
        const la_ssize_t got = archive_read_data(unpacker->stream, bytes, count);
        if (got >= 0) return static_cast<std::size_t>(got);
        const char* const reason = archive_error_string(unpacker->stream);
        error = reason != nullptr ? reason : "it cannot be unpacked further";
        return 0;
    }
    if (!head.empty()) {
        const std::size_t taken = std::min(count, head.size());
        std::memcpy(bytes, head.data(), taken);
        head.erase(0, taken);
        return taken;
    }
    return descriptor < 0 ? 0 : ReadFile(bytes, count);
}

}  // namespace ckscribe
