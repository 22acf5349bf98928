// The calls of a run, thread by thread, as far as two runs can be compared by them: without handles,
// addresses, times, bytes that came out, and initialisation vectors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "reader/log_reading.h"

namespace ckscribe {

// Texts that many calls share, each kept once.
class SharedTexts {
public:
    std::uint32_t NumberOf(const std::string& text);
    const std::string& operator[](std::uint32_t number) const { return *texts[number]; }

private:
    std::unordered_map<std::string, std::uint32_t> numbers;
    std::vector<const std::string*> texts;
};

struct ComparedCall {
    std::uint32_t asked = 0;     // "C_Login(user=1, PIN=********)", a number of SharedTexts
    std::uint32_t answered = 0;  // "CKR_OK", "CKR_OK slots=[1 2]", "?"
    std::uint64_t line = 0;
    std::optional<std::uint64_t> nanoseconds;
};

struct ComparedThread {
    std::uint32_t process = 0;
    std::optional<std::int64_t> thread;
    std::vector<ComparedCall> calls;
};

// Collects a run. Threads stand in the order of their first calls to end.
class CallOrder : public LogSink {
public:
    // `texts` outlives this.
    explicit CallOrder(SharedTexts& texts) : texts(texts) {}

    void OnCall(const Call& call) override;

    const std::vector<ComparedThread>& Threads() const { return threads; }

private:
    SharedTexts& texts;
    std::vector<ComparedThread> threads;
    std::unordered_map<std::string, std::size_t> places;
};

}  // namespace ckscribe
