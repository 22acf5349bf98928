// The binding to the target library: loads it, finds its functions by name, forwards calls to it.
//
// Connect and Disconnect run one at a time (the start-up takes turns); forwarding methods run on any number
// of threads, also while a Disconnect does. A function that the target lacks is bound to a stub, so that
// every call has somewhere to go.
#pragma once

#include <p11-kit/pkcs11.h>

#include <atomic>
#include <cstddef>

#include "front/calls_in_target.h"
#include "front/vendor_words.h"

class CryptokiBridge {
public:
    using Slot = std::atomic<void*>;

    // All stubs, "Not yet connected.".
    CryptokiBridge();
    ~CryptokiBridge() { Disconnect(); }
    CryptokiBridge(const CryptokiBridge&) = delete;
    CryptokiBridge& operator=(const CryptokiBridge&) = delete;

    // Loads the library at `path` in place of the one that is loaded. 1 when it was loaded and lacks no
    // function that is needed, or when the bind level is not 0; else 0, and Error() says why. Whatever was
    // found is bound.
    int Connect(const char* path);

    // Back to all stubs. The target is unloaded, unless a call is still inside it.
    void Disconnect();

    // From here to CallsInTarget::Leave of the result, a Disconnect does not unload the target.
    ckscribe::CallsInTarget::Line& KeepTarget() { return callsInTarget.Enter(); }

    // "Not yet connected.", "Connected.", the last function that was missing, or the loader's words (at most
    // 249 characters). Valid until the next Connect or Disconnect.
    const char* Error() const { return message; }

    // Why the target of the latest Connect cannot be used, as one line for a person: it was not loaded, or it
    // hands out no list of functions. Empty when it can be used. Valid until the next Connect or Disconnect.
    const char* Failure() const { return failure; }

    void InitializeStubs();

    // Answers 0x54 (CKR_FUNCTION_NOT_SUPPORTED) to any call, whatever its arguments.
    static CK_RV Stub();

    // 0 for a null address, which leaves the slot as it is; else stores it and gives 1.
    static int SetFunctionPointer(Slot* slot, void* address);

    // The address of a function of the target, or null. A function of this library, found because the target
    // depends on it, is none of the target's.
    static void* GetSymbolAddressSilent(void* handle, const char* name, unsigned silent);

    // The path that the section "Wendrafil2" names, or the load-balancing library's in place of
    // "liblblib2.so" once load balancing is disabled; also reads the bind level. Valid until the next call.
    // Not used by this library.
    static const char* WendrafilLibrary();
    static void DisableLB();
    static const char* shimLibrary() { return "ormaShim.so"; }

    // 0: a missing function is announced on standard output and makes Connect fail. 1: Connect always
    // succeeds. 2: so it does, and silently.
    static int bindLevel;

    // Whether missing functions are announced at all, at bind levels 0 and 1.
    static bool isAnnouncing;

    // What a call does that finds no function of a target bound: it may have begun before another thread
    // stopped the library, and starts it again. Nothing at first; set when the library is loaded, before
    // other threads can call.
    static void (*startAgain)();

    // One method for each function that can be forwarded: it hands on the arguments and the result unchanged.
#define UNWRAP(...) __VA_ARGS__
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    CK_RV C_##Name Parameters { return Forward<CK_RV(*) Parameters>(kC_##Name, UNWRAP Arguments); }
#define COUNTER_ROW(Name, Parameters, Arguments) \
    CK_RV Name Parameters { return Forward<CK_RV(*) Parameters>(k##Name, UNWRAP Arguments); }
#define CA_EVERY_ROW(Name)                                                      \
    CK_RV CA_##Name(VENDOR_PARAMETERS) {                                        \
        return Forward<ckscribe::VendorFunction>(kCA_##Name, VENDOR_ARGUMENTS); \
    }
#include "functions/functions.def"
#undef UNWRAP

private:
    enum SlotIndex : std::size_t {
#define C_EVERY_ROW(Name, ...) kC_##Name,
#define COUNTER_ROW(Name, ...) k##Name,
#define CA_EVERY_ROW(Name) kCA_##Name,
#include "functions/functions.def"
        kSlotCount
    };

    // The call is counted before the slot is read: Disconnect first puts the stubs in and then looks at the
    // count, so that it sees every call that could have read the target's address. Nothing here needs
    // unwinding: a thread that ends inside the target meets no code of ours on its way out.
    template <class Function, class... Arguments>
    CK_RV Forward(SlotIndex index, Arguments... arguments) {
        ckscribe::CallsInTarget::Line* line = &callsInTarget.Enter();
        void* function = slots[index].load(std::memory_order_seq_cst);
        if (function == StubAddress()) [[unlikely]]
            function = BoundAfterStart(index, line);
        const CK_RV rv = reinterpret_cast<Function>(function)(arguments...);
        ckscribe::CallsInTarget::Leave(*line);
        return rv;
    }

    static void* StubAddress() { return reinterpret_cast<void*>(&Stub); }

    // The address in a slot where the stub was found, once more, after the library has been started again;
    // the stub only if the target has no such function. `line` is the one on which the call is counted.
    void* BoundAfterStart(SlotIndex index, ckscribe::CallsInTarget::Line*& line);

    bool Load(const char* path);
    bool Bind(const char* path);
    bool BindRequired(SlotIndex index, const char* name, void* listed = nullptr);
    void BindOptional(SlotIndex index, const char* name, unsigned silent, void* listed = nullptr);
    CK_FUNCTION_LIST ListedFunctions(const char* path);
    bool ExportsOtherStandardFunctions() const;
    void ExplainFailure(const char* what, const char* path, const char* reason);

    static constexpr std::size_t kErrorSize = 250;
    static constexpr std::size_t kFailureSize = 1000;

    void* handle = nullptr;
    const char* message;
    char errorBuffer[kErrorSize] = {};
    char failure[kFailureSize] = {};
    Slot slots[kSlotCount];
    std::atomic<unsigned> changes{0};  // of all slots together: at each Disconnect and after each Connect
    ckscribe::CallsInTarget callsInTarget;

    static int loadBalancingDisabled;
};
