// Joins the records of one log, or of one family of rotated logs, to calls. Its memory grows with the calls
// that are open and with the threads, not with the log.
//
// Records of text are joined by process, thread and function, the newest open start first (a target may call
// itself through its list); the old format has no threads. Events are joined by run and call.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "reader/call.h"
#include "reader/record.h"

namespace ckscribe {

class CallJoiner {
public:
    // Takes the next record. An end record makes a call, which `sink` gets.
    void Take(const Record& record, std::uint32_t file, CallSink& sink);

    // Gives the calls that have no end to `sink`, in the order of the log, and forgets them.
    void Finish(CallSink& sink);

    // Calls `visit` for each call that is open, in no order.
    void ForEachOpen(const std::function<void(const Call&)>& visit) const;

    std::size_t OpenCount() const { return openCount; }

private:
    struct OpenCall {
        Record start;
        std::string text;
        std::uint64_t order = 0;
        std::uint32_t file = 0;
    };
    struct Key {
        std::uint64_t first = 0;   // process and format, or run
        std::uint64_t second = 0;  // thread, or call
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct HashOfKey {
        std::size_t operator()(const Key& key) const {
            std::uint64_t hash = key.first * 0x9e3779b97f4a7c15 ^ key.second;
            hash *= 0xff51afd7ed558ccd;
            return hash ^ hash >> 32;
        }
    };
    using OpenCalls = std::vector<std::uint32_t>;  // places in `pool`, the newest last

    static Key KeyOf(const Record& record);
    static Call CallOf(const OpenCall& open);
    OpenCalls& CallsOf(const Key& key);
    std::uint32_t TakePlace();
    static int FindStart(const OpenCalls& open, const std::deque<OpenCall>& pool, const Record& end);

    std::unordered_map<Key, OpenCalls, HashOfKey> open;
    // Open calls lie in a pool, so that the memory of their texts serves again and again.
    std::deque<OpenCall> pool;
    std::vector<std::uint32_t> freePlaces;
    std::uint64_t nextOrder = 0;
    std::size_t openCount = 0;
    // Of the record before; most records have the same.
    Key lastKey;
    OpenCalls* lastCalls = nullptr;
};

}  // namespace ckscribe
