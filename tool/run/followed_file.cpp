#include "tool/run/followed_file.h"

#include <fcntl.h>
#include <unistd.h>

namespace ckscribe {

namespace {

constexpr std::size_t kRoom = std::size_t{1} << 20;
constexpr std::uint64_t kGivenBackAtOnce = std::uint64_t{16} << 20;

}  // namespace

FollowedFile::~FollowedFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

bool FollowedFile::Open() {
    if (descriptor_ < 0) descriptor_ = open(path_.c_str(), (givesBack_ ? O_RDWR : O_RDONLY) | O_CLOEXEC);
    return descriptor_ >= 0;
}

void FollowedFile::ReadMore() {
    pending_.erase(0, taken_);
    taken_ = 0;
    if (!Open()) return;
    const std::size_t before = pending_.size();
    pending_.resize(before + kRoom);
    const ssize_t size = pread(descriptor_, pending_.data() + before, kRoom, static_cast<off_t>(offset_));
    pending_.resize(before + static_cast<std::size_t>(size > 0 ? size : 0));
    offset_ += pending_.size() - before;
    GiveBack();
}

std::string_view FollowedFile::Read() {
    ReadMore();
    taken_ = pending_.size();
    return pending_;
}

std::string_view FollowedFile::ReadRecords(char end) {
    ReadMore();
    const std::size_t last = pending_.rfind(end);
    taken_ = last == std::string::npos ? 0 : last + 1;
    return std::string_view(pending_).substr(0, taken_);
}

void FollowedFile::GiveBack() {
#if defined(FALLOC_FL_PUNCH_HOLE)
    if (!givesBack_ || offset_ - givenBack_ < kGivenBackAtOnce) return;
    fallocate(descriptor_, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, static_cast<off_t>(givenBack_),
              static_cast<off_t>(offset_ - givenBack_));
    givenBack_ = offset_;
#endif
}

}  // namespace ckscribe
