// A file that another process appends to, read as it grows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ckscribe {

class FollowedFile {
public:
    // The file need not be there yet. With `givesBack`, what was read is given back to the file system where
    // that can be done, so that the file takes no more room than what has not been read.
    FollowedFile(std::string path, bool givesBack) : path_(std::move(path)), givesBack_(givesBack) {}
    ~FollowedFile();
    FollowedFile(const FollowedFile&) = delete;
    FollowedFile& operator=(const FollowedFile&) = delete;

    // What was appended since the last call, up to 1 MiB; empty when there is nothing new. Valid until the
    // next call.
    std::string_view Read();

    // The same, in whole records: what follows the last `end` comes with a later call. A record longer than a
    // call's room is kept until it is whole.
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
    std::string pending_;          // what was read and not handed out before the last call
    std::size_t taken_ = 0;        // how much of pending_ the last call handed out
};

}  // namespace ckscribe
