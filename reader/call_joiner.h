// Joins the records of one log, or of one family of rotated logs, to calls. Its memory grows with the open
// calls and the threads, not with the log. One thread at a time may use it.
//
// It joins text records by process, thread and function, the newest open start first: a target may call
// itself through its list. The old format has no threads. It joins events by run and call. Events that were
// made from a text log have neither; it joins them like text records.
#pragma once

#include <array>
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
    // Takes the next record. A start record begins a call and an end record completes one; `sink` gets both.
    // The caller keeps the record's text unchanged until KeepTexts or Finish.
    void Take(const Record& record, std::uint32_t file, CallSink& sink);

    // Copies the texts of the open calls. After this the caller may free the texts of all records so far.
    void KeepTexts();

    // Gives the calls that have no end to `sink`, in the order of the log, and forgets them.
    void Finish(CallSink& sink);

    // Calls `visit` for each open call, in no particular order.
    void ForEachOpen(const std::function<void(const Call&)>& visit) const;

    std::size_t OpenCount() const { return openCount; }

private:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    struct OpenCall {
        Call call;
        std::uint64_t order = 0;
        std::uint32_t older = kNone;  // the next older one with the same key
        bool isOpen = false;
        std::string text;  // once it is kept
    };
    struct Key {
        std::uint64_t first = 0;   // process, function and format, or run
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
    static Key KeyOf(const Record& record, FunctionIndex function);
    std::uint32_t& NewestOf(const Key& key);
    void Open(const Record& record, std::uint32_t file, std::uint32_t& newest);
    std::uint32_t* FindStart(const Record& end);

    // `open` finds the newest open call of each process, thread and function, or of each event that has
    // begun. The function is a part of the key: the search for a start takes equally long however many calls
    // are open.
    std::unordered_map<Key, std::uint32_t, HashOfKey> open;
    // Open calls lie in a pool, which uses their memory again and again.
    std::deque<OpenCall> pool;
    std::vector<std::uint32_t> freePlaces;
    std::vector<std::uint32_t> begun;  // since texts were kept
    std::uint64_t nextOrder = 0;
    std::size_t openCount = 0;

    // Text logs repeat few threads and functions: the entries of `known` point into `open` and save most of
    // its look-ups.
    struct Known {
        Key key;
        std::uint32_t* newest = nullptr;
    };
    static constexpr std::size_t kMostKnown = 512;
    std::array<Known, kMostKnown> known{};
};

}  // namespace ckscribe
