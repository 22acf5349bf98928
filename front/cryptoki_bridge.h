// A CryptokiBridge binds the target library: it loads the library, finds its functions and forwards calls to
// them.
//
// Threads: one thread at a time calls Connect or Disconnect, under the start lock. Any number of threads call
// forwarding methods, also during a Disconnect. A function that the target lacks is bound to a stub.
#pragma once

#include <p11-kit/pkcs11.h>

#include <atomic>
#include <cstddef>

#include "front/calls_in_target.h"
#include "front/vendor_words.h"

namespace ckscribe {

// This is true if the stub, and not the target, answered a call of the calling thread since it was set to
// false.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local bool stubHasAnswered;

}  // namespace ckscribe

class CryptokiBridge {
public:
    using Slot = std::atomic<void*>;

    // Binds every function to the stub. Error() is "Not yet connected.".
    CryptokiBridge();
    ~CryptokiBridge() { Disconnect(); }
    CryptokiBridge(const CryptokiBridge&) = delete;
    CryptokiBridge& operator=(const CryptokiBridge&) = delete;

    // Loads the library at `path` in place of the loaded one and binds what it has. Returns 1 if it was
    // loaded and lacks no function that is needed, or if the bind level is not 0. Otherwise returns 0, and
    // Error() says why.
    int Connect(const char* path);

    // Binds every function to the stub and unloads the target, unless a call is still inside it.
    void Disconnect();

    // Keeps a Disconnect from unloading the target until the result is given to CallsInTarget::Leave.
    ckscribe::CallsInTarget::Line& KeepTarget() { return callsInTarget.Enter(); }

    // Returns "Not yet connected.", "Connected.", the name of the last missing function, or what the loader
    // says (at most 249 characters). The text is valid until the next Connect or Disconnect.
    const char* Error() const { return message; }

    // Returns one line for a person that says why the target of the latest Connect cannot be used: it was not
    // loaded, or it hands out no list of functions. Returns an empty text if the target can be used. The text
    // is valid until the next Connect.
    const char* Failure() const { return failure; }

    // Binds every function to the stub.
    void InitializeStubs();

    // The stub answers 0x54 (CKR_FUNCTION_NOT_SUPPORTED) to any call, whatever its arguments.
    static CK_RV Stub();

    // Stores the address and returns 1. For null, leaves the slot as it is and returns 0.
    static int SetFunctionPointer(Slot* slot, void* address);

    // Returns the address of a function of the target, or null. If the target depends on this library, the
    // loader may find a function of this library instead; that counts as null. If `silent` is not 0, a
    // missing function is not announced.
    static void* GetSymbolAddressSilent(void* handle, const char* name, unsigned silent);

    // Returns the path that the section "Wendrafil2" names and reads the bind level. Once DisableLB was
    // called, a path that ends in "liblblib2.so" is replaced by that of the load-balancing section. The path
    // is valid until the next call. This library uses none of the three functions.
    static const char* WendrafilLibrary();
    static void DisableLB();
    static const char* shimLibrary() { return "ormaShim.so"; }

    // At level 0 a missing function is announced on standard output and makes Connect fail. At level 1 it is
    // announced, and Connect always succeeds. At level 2 it is not announced, and Connect always succeeds.
    static int bindLevel;

    // While this is false, missing functions are not announced at any bind level.
    static bool isAnnouncing;

    // A call that finds the stub calls this function: another thread may have stopped the library since the
    // call began, and this function starts it again. It does nothing at first. It is set while the library is
    // loaded, before other threads can call.
    static void (*startAgain)();

    // Each function that can be forwarded has one method, which hands on arguments and result unchanged.
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

    // Counts the call before it reads the slot. Disconnect first binds the stubs and then looks at the count;
    // therefore it sees every call that may have read an address of the target. Nothing here needs unwinding:
    // a thread that ends inside the target meets no code of ours on its way out.
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

    // Starts the library again for a call that found the stub, and returns what the slot holds then. That is
    // the stub only if the target has no such function. `line` is the line on which the call is counted.
    void* BoundAfterStart(SlotIndex index, ckscribe::CallsInTarget::Line*& line);

    bool Load(const char* path);
    bool Bind(const char* path);
    bool BindRequired(SlotIndex index, const char* name, void* listed = nullptr);
    void BindOptional(SlotIndex index, const char* name, unsigned silent, void* listed = nullptr);
    CK_FUNCTION_LIST ListedFunctions(const char* path);
    bool ExportsOtherStandardFunctions(const void* image) const;
    void ExplainFailure(const char* what, const char* path, const char* reason);

    static constexpr std::size_t kErrorSize = 250;
    static constexpr std::size_t kFailureSize = 1000;

    void* handle = nullptr;
    const char* message;
    char errorBuffer[kErrorSize] = {};
    char failure[kFailureSize] = {};
    Slot slots[kSlotCount];
    // Counts the changes of all slots together: one at each Disconnect, and one after each Connect.
    std::atomic<unsigned> changes{0};
    ckscribe::CallsInTarget callsInTarget;

    static int loadBalancingDisabled;
};
