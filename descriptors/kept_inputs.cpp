#include "descriptors/kept_inputs.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "descriptors/call_event.h"
#include "host/thread_number.h"

#if defined(__FreeBSD__)
#include <sys/thr.h>
#else
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace ckscribe {

namespace {

constexpr std::size_t kFirstSearch = 16;

struct Kept {
    Kept* next;
    const CallEvent* event;
    int thread;
    std::size_t length;

    char* Text() { return reinterpret_cast<char*>(this + 1); }
};

Kept* first = nullptr;
std::size_t count = 0;
std::size_t nextSearch = kFirstSearch;  // a search for ended threads begins at this count

// Signal 0 reaches no thread. The attempt to send it shows whether a thread of this number exists. A thread
// lives as well if the attempt is refused, as a filter of system calls does.
bool IsAlive(int thread) {
    const int error = errno;
#if defined(__FreeBSD__)
    const bool isSent = thr_kill(thread, 0) == 0;
#else
    const bool isSent = syscall(SYS_tgkill, getpid(), thread, 0) == 0;
#endif
    const bool isAlive = isSent || errno != ESRCH;
    errno = error;
    return isAlive;
}

template <class Condition>
void FreeWhere(const Condition& isToGo) {
    for (Kept** link = &first; *link != nullptr;) {
        Kept* const kept = *link;
        if (isToGo(*kept)) {
            *link = kept->next;
            std::free(kept);
            --count;
        } else {
            link = &kept->next;
        }
    }
}

void FreeInputOf(const CallEvent& event) {
    FreeWhere([&event](const Kept& kept) { return kept.event == &event; });
}

void FreeInputsOfEndedThreads() {
    FreeWhere([](const Kept& kept) { return !IsAlive(kept.thread); });
    nextSearch = 2 * count < kFirstSearch ? kFirstSearch : 2 * count;
}

}  // namespace

bool KeepInput(const CallEvent& event, std::string_view input) {
    FreeInputOf(event);
    if (count >= nextSearch) FreeInputsOfEndedThreads();
    auto* const kept = static_cast<Kept*>(std::malloc(sizeof(Kept) + input.size()));
    if (kept == nullptr) return false;
    *kept = {first, &event, SystemThreadNumber(), input.size()};
    std::memcpy(kept->Text(), input.data(), input.size());
    first = kept;
    ++count;
    return true;
}

std::string_view KeptInput(const CallEvent& event) {
    for (Kept* kept = first; kept != nullptr; kept = kept->next) {
        if (kept->event == &event) return {kept->Text(), kept->length};
    }
    return {};
}

void FreeInput(const CallEvent& event) { FreeInputOf(event); }

void FreeAllInputs() {
    FreeWhere([](const Kept&) { return true; });
}

void KeepInputsOfForkingThread(int numberInParent, int numberInChild) {
    FreeWhere([numberInParent](const Kept& kept) { return kept.thread != numberInParent; });
    for (Kept* kept = first; kept != nullptr; kept = kept->next) kept->thread = numberInChild;
}

}  // namespace ckscribe
