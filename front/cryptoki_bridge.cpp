#include "front/cryptoki_bridge.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdio>
#include <string_view>

#include "config/wendrafil_configuration.h"
#include "front/dynamic_loading.h"
#include "host/own_image.h"

int CryptokiBridge::bindLevel = 0;
int CryptokiBridge::loadBalancingDisabled = 0;
void (*CryptokiBridge::startAgain)() = [] {};

namespace {

constexpr char kNotConnected[] = "Not yet connected.";
constexpr char kConnected[] = "Connected.";
constexpr int kSilentLevel = 2;

// Asked of the image and not of its symbols: those of a target that depends on this library may be found
// here.
bool IsThisLibrary(void* handle) {
    link_map* image = nullptr;
    return dlinfo(handle, RTLD_DI_LINKMAP, &image) == 0 && ckscribe::IsInOwnImage(image->l_ld);
}

unsigned IsSilent() { return CryptokiBridge::bindLevel == kSilentLevel ? 1 : 0; }

}  // namespace

CryptokiBridge::CryptokiBridge() : message(kNotConnected) { InitializeStubs(); }

void CryptokiBridge::InitializeStubs() {
    for (Slot& slot : slots) slot.store(StubAddress(), std::memory_order_seq_cst);
}

void* CryptokiBridge::BoundAfterStart(SlotIndex index, CallsInTarget::Line*& line) {
    for (;;) {
        CallsInTarget::Leave(*line);
        const unsigned before = changes.load(std::memory_order_seq_cst);
        startAgain();
        line = &callsInTarget.Enter();
        void* const function = slots[index].load(std::memory_order_seq_cst);
        if (function != StubAddress() || changes.load(std::memory_order_seq_cst) == before) return function;
    }
}

CK_RV CryptokiBridge::Stub() { return CKR_FUNCTION_NOT_SUPPORTED; }

int CryptokiBridge::SetFunctionPointer(Slot* slot, void* address) {
    if (address == nullptr) return 0;
    slot->store(address, std::memory_order_seq_cst);
    return 1;
}

void* CryptokiBridge::GetSymbolAddressSilent(void* handle, const char* name, unsigned silent) {
    void* address = nullptr;
    LoadDynamicFunctionSilent(handle, name, &address, silent);
    if (!ckscribe::IsInOwnImage(address)) return address;
    if (silent == 0) AnnounceMissingFunction(name);
    return nullptr;
}

int CryptokiBridge::Connect(const char* path) {
    Disconnect();
    const bool isComplete = Load(path) && Bind();
    changes.fetch_add(1, std::memory_order_seq_cst);
    // A bind level other than 0 means to run with whatever could be bound, be it nothing; kept.
    if (!isComplete && bindLevel == 0) return 0;
    message = kConnected;
    return 1;
}

bool CryptokiBridge::Load(const char* path) {
    message = errorBuffer;
    std::snprintf(errorBuffer, kErrorSize, "Could not find library.");
    if (!LoadDynamicLibrary(path, &handle)) {
        handle = nullptr;
        std::size_t length = 0;
        RetrieveLastErrorString(errorBuffer, kErrorSize, &length);
        return false;
    }
    if (IsThisLibrary(handle)) {
        std::snprintf(errorBuffer, kErrorSize, "%s: is this library itself", path);
        UnloadDynamicLibrary(handle);
        handle = nullptr;
        return false;
    }
    return true;
}

bool CryptokiBridge::Bind() {
    bool isComplete = true;
#define C_ROW(Name, ...) isComplete &= BindRequired(kC_##Name, "C_" #Name);
#define C_OPTIONAL_ROW(Name, ...) BindOptional(kC_##Name, "C_" #Name, IsSilent());
#define COUNTER_ROW(Name, ...) BindOptional(k##Name, #Name, 1);
#define CA_EVERY_ROW(Name) isComplete &= BindRequired(kCA_##Name, "CA_" #Name);
#include "functions/functions.def"
    dlerror();  // what the look-ups left there is not the application's
    return isComplete;
}

bool CryptokiBridge::BindRequired(SlotIndex index, const char* name) {
    if (SetFunctionPointer(&slots[index], GetSymbolAddressSilent(handle, name, IsSilent()))) return true;
    message = name;
    return false;
}

void CryptokiBridge::BindOptional(SlotIndex index, const char* name, unsigned silent) {
    SetFunctionPointer(&slots[index], GetSymbolAddressSilent(handle, name, silent));
}

void CryptokiBridge::Disconnect() {
    changes.fetch_add(1, std::memory_order_seq_cst);
    InitializeStubs();
    if (handle == nullptr) return;
    // A target that a call is still inside of stays loaded for the rest of the process.
    if (callsInTarget.None()) UnloadDynamicLibrary(handle);
    handle = nullptr;
    message = kNotConnected;
    loadBalancingDisabled = 0;
}

const char* CryptokiBridge::WendrafilLibrary() {
    static WendrafilConfiguration configuration;
    const char* const path = configuration.LibraryFileName();
    bindLevel = configuration.GetFunctionBindLevel();
    const bool isBalancing = std::string_view(path).ends_with("liblblib2.so");
    return loadBalancingDisabled != 0 && isBalancing ? configuration.LBLibLibraryFileName() : path;
}

void CryptokiBridge::DisableLB() { loadBalancingDisabled = 1; }
