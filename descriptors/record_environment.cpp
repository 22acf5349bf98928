#include "descriptors/record_environment.h"

#include <pthread.h>
#include <unistd.h>

#include <cstdint>

namespace ckscribe {

namespace {

int rememberedProcessId = 0;

std::time_t Now() { return std::time(nullptr); }

int ProcessId() {
    if (rememberedProcessId == 0) rememberedProcessId = static_cast<int>(getpid());
    return rememberedProcessId;
}

int ThreadId() { return static_cast<int>(static_cast<std::uint32_t>((std::uintptr_t)pthread_self())); }

}  // namespace

RecordEnvironment recordEnvironment = {Now, std::clock, ProcessId, ThreadId};

void ForgetProcessId() { rememberedProcessId = 0; }

}  // namespace ckscribe
