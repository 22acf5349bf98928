// Reads a file while other processes append to it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ckscribe {

class FollowedFile {
public:
    // The file need not exist yet. With `givesBack` the object frees the space of what was read, where the
    // file system can do that. The file then takes only the space of its unread part.
    FollowedFile(std::string path, bool givesBack) : path_(std::move(path)), givesBack_(givesBack) {}
    ~FollowedFile();
    FollowedFile(const FollowedFile&) = delete;
    FollowedFile& operator=(const FollowedFile&) = delete;

    // Returns what was appended since the last call, at most 1 MiB, or an empty text when there is nothing
    // new. It is valid until the next call.
    std::string_view Read();

    // Returns the same in whole records: what follows the last `end` comes with a later call. It keeps a
    // record that is longer than 1 MiB until it is whole.
    std::string_view ReadRecords(char end);

private:
    bool Open();
    void ReadMore();
    void GiveBack();

    std::string path_;
    bool givesBack_;
    int descriptor_ = -1;
    std::uint64_t offset_ = 0;     // of the next byte to read
    std::uint64_t givenBack_ = 0;  // everything below was given back
    // `pending_` holds what was read and not handed out before the last call. That call handed out the first
    // `taken_` bytes.
    std::string pending_;
    std::size_t taken_ = 0;
};

}  // namespace ckscribe
