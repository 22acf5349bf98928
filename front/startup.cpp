#include "front/startup.h"

#include <dlfcn.h>
#include <link.h>
#include <pthread.h>

#include "config/process_configuration.h"
#include "descriptors/abstract_descriptor.h"
#include "descriptors/call_event.h"
#include "descriptors/descriptor_library.h"
#include "descriptors/error_log.h"
#include "descriptors/events_file.h"
#include "descriptors/kept_inputs.h"
#include "descriptors/record_environment.h"
#include "front/overwritten_lists.h"
#include "front/process_bridge.h"
#include "host/host_shield.h"
#include "host/own_image.h"
#include "host/record_lock.h"
#include "host/thread_number.h"
#include "util/cache_line.h"
#include "util/undestroyed.h"

#if defined(__GLIBCXX__) && defined(CKSCRIBE_OWN_RUNTIME)
#define CKSCRIBE_FREES_RUNTIME_MEMORY
namespace __gnu_cxx {
void __freeres();
}
#endif

std::atomic<int> alreadyInitialized{0};
std::atomic<int> alreadyFinalized{0};
std::atomic<OrmaMutex*> pCkLogMutex{nullptr};

namespace {

// Start and stop take turns under this lock. A thread takes it before the record lock, never after it.
alignas(ckscribe::kCacheLine) ckscribe::Undestroyed<OrmaMutex> startMutex;

// pCkLogMutex points to this mutex once the library has started. The mutex needs no memory, so the lock never
// fails.
alignas(ckscribe::kCacheLine) ckscribe::Undestroyed<OrmaMutex> recordMutex;

// While a target is loaded or unloaded, it may call exported functions on that thread. Such calls go to
// whatever is bound at that moment.
bool isStartingOrStopping CKSCRIBE_GUARDED_BY(startMutex.object) = false;

// The check cannot follow a lock from one function to the next.
CKSCRIBE_UNCHECKED void LockForFork() {
    startMutex.object.Lock();
    if (OrmaMutex* const recordLock = pCkLogMutex.load()) recordLock->Lock();
}

CKSCRIBE_UNCHECKED void UnlockInParent() {
    if (OrmaMutex* const recordLock = pCkLogMutex.load()) recordLock->Unlock();
    startMutex.object.Unlock();
}

// In the child the locks belong to a thread of the parent. Nobody can unlock them there; they are made
// anew.
void UnlockInChild() {
    if (OrmaMutex* const recordLock = pCkLogMutex.load()) recordLock->__init();
    startMutex.object.__init();
    ckscribe::ForgetProcessId();
    const int numberInParent = ckscribe::SystemThreadNumber();
    ckscribe::ForgetThreadNumber();
    ckscribe::KeepInputsOfForkingThread(numberInParent, ckscribe::SystemThreadNumber());
    ckscribe::ForgetEventRun();
    ckscribe::OpenEventsAnewInChild();
}

// This is true if the program is linked with this library, directly or through other libraries, or if the
// loader was asked to load it with the program. Such a library is never unloaded before the process ends.
bool isPartOfProgram = false;

// Call this function while the loader loads the library. The GNU loader takes what dlopen loads into the
// program's scope, if at all, only after its constructors. Other loaders may do otherwise, and dlmopen has
// other scopes.
bool IsInScopeOfProgram() {
#if defined(__GLIBC__)
    void* const program = dlopen(nullptr, RTLD_LAZY);
    if (program == nullptr) return false;
    Lmid_t scope = LM_ID_NEWLM;
    const bool isFound = dlinfo(program, RTLD_DI_LMID, &scope) == 0 && scope == LM_ID_BASE &&
                         ckscribe::IsInOwnImage(dlsym(program, "CkLogSpecialInitialize"));
    dlclose(program);
    return isFound;
#else
    return false;
#endif
}

// Handles forks from here on: the process may fork while another thread makes the first call.
__attribute__((constructor)) void Load() {
    isPartOfProgram = IsInScopeOfProgram();
    CryptokiBridge::startAgain = ckscribe::StartLibrary;
    pthread_atfork(LockForFork, UnlockInParent, UnlockInChild);
}

// A static destructor sets this at the end of the process before Unload(), and at dlclose() after it.
// Unload() tells the two apart by this.
//
// exit() runs exit handlers, which such destructors are, in the reverse order of their registration. One of
// them is the loader's, which runs Unload(). It is registered after the libraries that the program is linked
// with are loaded, and before the program starts. So two notices are needed. The one that is registered at
// loading serves a library that dlopen loads. The one that is registered at the first use serves a library
// that the program is linked with.
bool processEnds = false;
struct EndNotice {
    ~EndNotice() { processEnds = true; }
} noticeSinceLoading;

void RegisterNoticeSinceFirstUse() { static EndNotice noticeSinceFirstUse; }

void InitCkLog() CKSCRIBE_NEEDS(startMutex.object) {
    RegisterNoticeSinceFirstUse();
    const char* const path = configuration.CkLogLibraryFileName();
    pCkLogMutex.store(&recordMutex.object, std::memory_order_release);
    CryptokiBridge::isAnnouncing = configuration.IsAnnouncing() != 0;
    bridge.Connect(path);
    configuration.GetLoggingMask();
    const ckscribe::RecordLock lock(recordMutex.object);
    InitializeDescriptorLibrary();
    // The configuration remembers this path for an application that may not read the file later.
    configuration.CkLogErrorFile();
    // The permissions of the error file are known only now.
    if (*bridge.Failure() != '\0') ReportErrorInLog(bridge.Failure());
}

void ExitCkLog() CKSCRIBE_NEEDS(startMutex.object) {
    if (OrmaMutex* const recordLock = pCkLogMutex.load()) {
        const ckscribe::RecordLock lock(*recordLock);
        TerminateDescriptorLibrary();
    }
    bridge.Disconnect();
}

// The C++ runtime sets memory aside for exceptions when it is loaded, and gives it back only to tools that
// look for leaks. A runtime that is linked into this library goes with it; without this call every dlopen
// would lose that memory. A shared runtime belongs to the application.
void FreeRuntimeMemory() {
#ifdef CKSCRIBE_FREES_RUNTIME_MEMORY
    __gnu_cxx::__freeres();
#endif
}

// Another thread may hold the lock for ever: it waits in a write to the log, or is gone. The end of the
// process does not wait for it. The check knows the record lock only by another name.
CKSCRIBE_UNCHECKED void GiveListsBackIfFree() {
    if (!recordMutex.object.LockIfFree()) return;
    ckscribe::overwrittenLists.GiveBackIfFree();
    recordMutex.object.Unlock();
}

// Gives the lists back before the target's own destructors, which may look at them. dlclose also lets the
// target go and gives everything else back. The end of the process does not: other threads may still be in
// calls, and destructors of the application may still make some.
__attribute__((destructor)) void Unload() {
    if (processEnds || isPartOfProgram) {
        GiveListsBackIfFree();
        return;
    }
    {
        const ckscribe::RecordLock lock(recordMutex.object);
        ckscribe::overwrittenLists.GiveBack();
        AbstractDescriptor::CloseCaptureStream();
        ckscribe::CloseEvents();
        ckscribe::FreeAllInputs();
    }
    ckscribe::DestroyProcessConfiguration();
    ckscribe::DestroyProcessBridge();
    FreeRuntimeMemory();
}

}  // namespace

void CkLogSpecialInitialize() {
    ckscribe::BehindHostShield([] {
        const ckscribe::OrmaLock lock(startMutex.object);
        if (alreadyInitialized.load(std::memory_order_acquire) != 0 || isStartingOrStopping) return;
        isStartingOrStopping = true;
        InitCkLog();
        isStartingOrStopping = false;
        alreadyFinalized.store(0);
        alreadyInitialized.store(1, std::memory_order_release);
    });
}

void CkLogSpecialFinalize() {
    ckscribe::BehindHostShield([] {
        const ckscribe::OrmaLock lock(startMutex.object);
        if (alreadyFinalized.load() != 0 || isStartingOrStopping) return;
        // This comes first: calls of other threads then wait for the end and start the library again.
        // Otherwise they would find neither log nor target.
        alreadyInitialized.store(0, std::memory_order_release);
        isStartingOrStopping = true;
        ExitCkLog();
        isStartingOrStopping = false;
        alreadyFinalized.store(1);
    });
}
