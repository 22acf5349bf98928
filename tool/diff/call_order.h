// Collects the calls of a run, thread by thread, in a form that can be compared with another run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "reader/log_reading.h"

namespace ckscribe {

// Keeps each text that many calls share once.
class SharedTexts {
public:
    std::uint32_t NumberOf(const std::string& text);
    const std::string& operator[](std::uint32_t number) const { return *texts[number]; }

private:
    std::unordered_map<std::string, std::uint32_t> numbers;
    std::vector<const std::string*> texts;
};

// A ComparedText holds numbers of SharedTexts.
struct ComparedText {
    std::uint32_t shown = 0;  // "C_Login(user=1, PIN=********)", "CKR_OK", "CKR_OK slots=[1 2]", "?"
    std::uint32_t shape = 0;  // see Comparable
    std::uint32_t facts = 0;
};

struct ComparedCall {
    ComparedText question;
    ComparedText answer;
    std::uint64_t line = 0;
    std::optional<std::uint64_t> nanoseconds;
};

struct ComparedThread {
    std::uint32_t process = 0;
    std::optional<std::int64_t> thread;
    std::vector<ComparedCall> calls;  // in the order in which they began
};

// Collects the calls of a run.
class CallOrder : public LogSink {
public:
    // `texts` outlives this.
    explicit CallOrder(SharedTexts& texts) : texts(texts) {}

    void OnCall(const Call& call) override;

    // Returns whether each call has a thread.
    bool HasThreads() const { return hasThreads; }

    // Returns the threads in the order of their first calls, and forgets them. With `byProcess` each process
    // counts as one thread.
    std::vector<ComparedThread> TakeThreads(bool byProcess);

private:
    SharedTexts& texts;
    std::vector<ComparedThread> threads;
    std::map<std::pair<std::uint32_t, std::optional<std::int64_t>>, std::size_t> places;
    bool hasThreads = true;
};

}  // namespace ckscribe
