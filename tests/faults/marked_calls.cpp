#include "tests/faults/marked_calls.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "tests/unwatched.h"

namespace {

constexpr std::size_t kLongestMark = 40;

// Writes "caller/number" and fills up with a letter that differs from call to call. Gives the text's length.
std::size_t WriteText(char* text, unsigned caller, unsigned long number, std::size_t length) {
    char* end = std::to_chars(text, text + kLongestMark, caller).ptr;
    *end++ = '/';
    end = std::to_chars(end, text + kLongestMark, number).ptr;
    const std::size_t mark = static_cast<std::size_t>(end - text);
    if (length <= mark) return mark;
    std::memset(end, static_cast<int>('a' + (caller + number) % 26), length - mark);
    return length;
}

std::string_view QuotedText(std::string_view children) {
    const std::size_t begin = children.find('"');
    const std::size_t end = children.rfind('"');
    return begin == end ? std::string_view() : children.substr(begin + 1, end - begin - 1);
}

// Reads what WriteText wrote; false for any other text.
bool ReadText(std::string_view text, unsigned& caller, unsigned long& number) {
    const char* const end = text.data() + text.size();
    const auto [slash, callerError] = std::from_chars(text.data(), end, caller);
    if (callerError != std::errc() || slash == end || *slash != '/') return false;
    if (std::from_chars(slash + 1, end, number).ec != std::errc()) return false;
    static char expected[MarkedCaller::kLongestText];
    if (text.size() > sizeof expected) return false;
    return text == std::string_view(expected, WriteText(expected, caller, number, text.size()));
}

}  // namespace

const std::set<std::string> kMarkedFunctions{"Sign", "HAAnswerMofNChallenge"};

CK_RV GiveDataBack(const char* function, const TargetWord* arguments, std::size_t) {
    if (std::strcmp(function, "C_Sign") != 0 && std::strcmp(function, "CA_HAAnswerMofNChallenge") != 0)
        return CKR_OK;
    std::memcpy(reinterpret_cast<void*>(arguments[3]), reinterpret_cast<const void*>(arguments[1]),
                arguments[2]);
    *reinterpret_cast<CK_ULONG*>(arguments[4]) = arguments[2];
    return CKR_OK;
}

std::string IdOfThisThread() {
    if (AreEventsTested()) return std::to_string(gettid());
    const auto self = static_cast<std::uint32_t>((std::uintptr_t)pthread_self());
    char id[16];
    std::snprintf(id, sizeof id, "%03d", static_cast<int>(self));
    return id;
}

MarkedCaller::MarkedCaller(Library& library, unsigned caller, Marked functions) : caller(caller) {
    auto* const standard = library.Exported<Function>("C_Sign");
    auto* const vendor = library.Exported<Function>("CA_HAAnswerMofNChallenge");
    this->functions[0] = functions == Marked::kVendor ? vendor : standard;
    this->functions[1] = functions == Marked::kStandard ? standard : vendor;
}

CK_RV MarkedCaller::Call(std::size_t length) {
    const unsigned long number = calls++;
    const CK_ULONG size = WriteText(text, caller, number, length);
    CK_ULONG returnedSize = sizeof returned;
    const CK_RV rv = functions[number % 2](caller, reinterpret_cast<CK_BYTE*>(text), size,
                                           reinterpret_cast<CK_BYTE*>(returned), &returnedSize);
    if (rv != CKR_OK) return rv;
    return returnedSize == size && std::memcmp(text, returned, size) == 0 ? CKR_OK : CKR_GENERAL_ERROR;
}

void MarkedLog::Read(const std::string& text) {
    const Unwatched reading;
    const ParsedLog log = ParseLog(text);
    EXPECT_EQ(log.remainder.substr(0, 1000), "");
    for (const LogRecord& record : log.records) {
        (record.thread.empty() ? hasOldFormat : hasNewFormat) = true;
        if (record.function != "Sign" && record.function != "HAAnswerMofNChallenge") {
            ++otherRecords;
            continue;
        }
        unsigned caller = 0;
        unsigned long number = 0;
        ASSERT_TRUE(ReadText(QuotedText(record.children), caller, number)) << record.children;
        Count(caller, 2 * number + (record.isStart ? 0 : 1), record);
        shortestChildren = std::min(shortestChildren, record.children.size());
        longestChildren = std::max(longestChildren, record.children.size());
    }
}

void MarkedLog::Count(unsigned caller, unsigned long number, const LogRecord& record) {
    CallerRecords& records = callers[caller];
    if (records.next == 0) records.process = record.process;
    EXPECT_EQ(records.process, record.process) << "caller " << caller;
    if (!record.isStart && number == records.next) {
        EXPECT_EQ(records.latestFunction, record.function) << "caller " << caller;
        const bool haveThread = !record.thread.empty() && !records.latestThread.empty();
        if (haveThread) {
            EXPECT_EQ(records.latestThread, record.thread) << "caller " << caller;
        }
    }
    if (!record.thread.empty() && record.thread != records.latestThread)
        records.threads.insert(record.thread);
    if (record.function != records.latestFunction) records.functions.insert(record.function);
    records.latestThread = record.thread;
    records.latestFunction = record.function;
    EXPECT_GE(number, records.next) << "caller " << caller << ": a record again, or too late";
    records.missing += number - records.next;
    records.next = number + 1;
}
