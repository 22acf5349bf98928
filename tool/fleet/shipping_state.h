// `ckscribe convert --state` remembers from run to run how much of each file an engine has.
//
// It recognises a file by its content, whatever its name. The content is the first event, with which no other
// file begins, and the bytes before the place where reading goes on. Therefore a renamed, copied or
// compressed file goes on where it was left, and a file that was emptied or cut begins anew. In doubt a file
// is read from its beginning: a repeat replaces the row that it repeats, while a gap would stay.
//
// One thread at a time may use it.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace ckscribe {

// what() is a sentence that says why the state cannot be used.
struct StateError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct ShippedContent {
    std::uint64_t offset = 0;    // so many bytes (unpacked) are done with
    std::string tail;            // fingerprint of the last of them
    std::uint64_t position = 0;  // of the last row
    // `seen` says when a file last had this content, in seconds since 1970.
    std::int64_t seen = 0;
};

class ShippingState {
public:
    // At most so many bytes before an offset are compared.
    static constexpr std::uint64_t kTail = 4096;

    // Reads the file if there is one, and keeps other processes from using it until the destructor. Throws
    // StateError, also when the file is the state of another host.
    ShippingState(std::string path, const std::string& host);
    ~ShippingState();
    ShippingState(const ShippingState&) = delete;
    ShippingState& operator=(const ShippingState&) = delete;

    ShippedContent& ContentOf(const std::string& fingerprint);

    // These two know the files that are done and do not grow, by LogSource::Stamp. Such files need not be
    // read again.
    bool IsDone(const std::string& stamp);
    void SetDone(const std::string& stamp);
    // Forgets the stamps that this run did not ask about, and contents that no file has had for 30 days.
    void ForgetUnused();

    // Replaces the file atomically. Throws StateError.
    void Save();

private:
    void Read();

    const std::string path;
    const std::string host;
    std::map<std::string, ShippedContent> contents;
    std::set<std::string> doneFiles;
    std::set<std::string> doneFilesOfRun;
    std::string saved;  // what the file holds, if this process wrote it
    int lock = -1;
};

// Returns a name of bytes. Equal bytes have equal names.
std::string FingerprintOf(std::string_view bytes);

}  // namespace ckscribe
