#include "front/cryptoki_bridge.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdio>
#include <string_view>

#include "config/wendrafil_configuration.h"
#include "front/dynamic_loading.h"
#include "front/listed_functions.h"
#include "functions/pkcs11_names.h"
#include "host/own_image.h"

int CryptokiBridge::bindLevel = 0;
int CryptokiBridge::loadBalancingDisabled = 0;
bool CryptokiBridge::isAnnouncing = true;
void (*CryptokiBridge::startAgain)() = [] {};

namespace {

constexpr char kNotConnected[] = "Not yet connected.";
constexpr char kConnected[] = "Connected.";
constexpr char kNotLoaded[] = "Could not load target library";
constexpr char kNoList[] = "Found no C_GetFunctionList in target library";
constexpr int kSilentLevel = 2;

// Looks at the image and not at its symbols: the symbols of a target that depends on this library may be
// found in this library.
bool IsThisLibrary(void* handle) {
    link_map* image = nullptr;
    return dlinfo(handle, RTLD_DI_LINKMAP, &image) == 0 && ckscribe::IsInOwnImage(image->l_ld);
}

unsigned IsSilent() {
    return CryptokiBridge::bindLevel == kSilentLevel || !CryptokiBridge::isAnnouncing ? 1 : 0;
}

template <class Function>
void* AddressOf(Function function) {
    return reinterpret_cast<void*>(function);
}

// Returns null for an address in no image.
const void* ImageOf(void* address) {
    Dl_info info = {};
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

// Returns the loader's message without the path with which it usually begins.
const char* WithoutPath(const char* words, std::string_view path) {
    const std::string_view text = words;
    const bool begins = text.starts_with(path) && text.substr(path.size()).starts_with(": ");
    return begins ? words + path.size() + 2 : words;
}

}  // namespace

CryptokiBridge::CryptokiBridge() : message(kNotConnected) { InitializeStubs(); }

void CryptokiBridge::InitializeStubs() {
    for (Slot& slot : slots) slot.store(StubAddress(), std::memory_order_seq_cst);
}

void* CryptokiBridge::BoundAfterStart(SlotIndex index, ckscribe::CallsInTarget::Line*& line) {
    for (;;) {
        ckscribe::CallsInTarget::Leave(*line);
        const unsigned before = changes.load(std::memory_order_seq_cst);
        startAgain();
        line = &callsInTarget.Enter();
        void* const function = slots[index].load(std::memory_order_seq_cst);
        if (function != StubAddress() || changes.load(std::memory_order_seq_cst) == before) return function;
    }
}

[[gnu::tls_model("initial-exec")]] constinit thread_local bool ckscribe::stubHasAnswered = false;

CK_RV CryptokiBridge::Stub() {
    ckscribe::stubHasAnswered = true;
    return CKR_FUNCTION_NOT_SUPPORTED;
}

int CryptokiBridge::SetFunctionPointer(Slot* slot, void* address) {
    if (address == nullptr) return 0;
    slot->store(address, std::memory_order_seq_cst);
    return 1;
}

void* CryptokiBridge::GetSymbolAddressSilent(void* handle, const char* name, unsigned silent) {
    void* address = nullptr;
    LoadDynamicFunctionSilent(handle, name, &address, silent);
    if (!ckscribe::IsInOwnImage(address)) return address;
    if (silent == 0) ckscribe::AnnounceMissingFunction(name);
    return nullptr;
}

int CryptokiBridge::Connect(const char* path) {
    Disconnect();
    const bool isComplete = Load(path) && Bind(path);
    changes.fetch_add(1, std::memory_order_seq_cst);
    // COMPAT: a bind level other than 0 means to run with what could be bound, even with nothing.
    if (!isComplete && bindLevel == 0) return 0;
    message = kConnected;
    return 1;
}

bool CryptokiBridge::Load(const char* path) {
    message = errorBuffer;
    *failure = '\0';
    if (!LoadDynamicLibrary(path, &handle)) {
        handle = nullptr;
        char words[kFailureSize];
        std::size_t length = 0;
        RetrieveLastErrorString(words, sizeof words, &length);
        std::snprintf(errorBuffer, kErrorSize, "%.*s", static_cast<int>(kErrorSize - 1), words);
        ExplainFailure(kNotLoaded, path, words);
        return false;
    }
    if (IsThisLibrary(handle)) {
        std::snprintf(errorBuffer, kErrorSize, "%s: is this library itself", path);
        ExplainFailure(kNotLoaded, path, "is this library itself");
        UnloadDynamicLibrary(handle);
        handle = nullptr;
        return false;
    }
    return true;
}

// Returns the functions of the target's list, if the target exports C_GetFunctionList and no other standard
// function. Does not ask any other target for its list.
CK_FUNCTION_LIST CryptokiBridge::ListedFunctions(const char* path) {
    void* const address = GetSymbolAddressSilent(handle, "C_GetFunctionList", 1);
    if (address == nullptr) {
        const char* const words = dlerror();
        ExplainFailure(kNoList, path, words != nullptr ? words : "it is only found in this library");
        return {};
    }
    if (ExportsOtherStandardFunctions(ImageOf(address))) return {};
    CK_FUNCTION_LIST* list = nullptr;
    const CK_RV rv = reinterpret_cast<CK_C_GetFunctionList>(address)(&list);
    if (rv == CKR_OK && list != nullptr) return ckscribe::TargetsFunctions(*list);
    const std::string_view result = GetErrorCode(rv);
    char reason[100];
    std::snprintf(reason, sizeof reason, "its C_GetFunctionList returned %.*s (0x%lx) and no list",
                  static_cast<int>(result.size()), result.data(), rv);
    ExplainFailure("Got no functions from target library", path, reason);
    return {};
}

// A look-up also finds functions of other images, which the target depends on.
bool CryptokiBridge::ExportsOtherStandardFunctions(const void* image) const {
    const auto isExported = [&](const char* name) {
        void* const address = GetSymbolAddressSilent(handle, name, 1);
        return address != nullptr && ImageOf(address) == image;
    };
#define C_EVERY_ROW(Name, ...) \
    if (isExported("C_" #Name)) return true;
#define C_LIST_ROW(...)
#define C_UNBOUND_ROW(...)
#include "functions/functions.def"
    return false;
}

bool CryptokiBridge::Bind(const char* path) {
    const CK_FUNCTION_LIST listed = ListedFunctions(path);
    bool isComplete = true;
#define C_ROW(Name, ...) isComplete &= BindRequired(kC_##Name, "C_" #Name, AddressOf(listed.C_##Name));
#define C_LIST_ROW(Name, ...) isComplete &= BindRequired(kC_##Name, "C_" #Name);
#define C_OPTIONAL_ROW(Name, ...) BindOptional(kC_##Name, "C_" #Name, IsSilent(), AddressOf(listed.C_##Name));
#define COUNTER_ROW(Name, ...) BindOptional(k##Name, #Name, 1);
#define CA_EVERY_ROW(Name) isComplete &= BindRequired(kCA_##Name, "CA_" #Name);
#include "functions/functions.def"
    dlerror();  // drops the error of our look-ups: the application would take it for its own
    return isComplete;
}

bool CryptokiBridge::BindRequired(SlotIndex index, const char* name, void* listed) {
    void* const address = listed != nullptr ? listed : GetSymbolAddressSilent(handle, name, IsSilent());
    if (SetFunctionPointer(&slots[index], address)) return true;
    message = name;
    return false;
}

void CryptokiBridge::BindOptional(SlotIndex index, const char* name, unsigned silent, void* listed) {
    void* const address = listed != nullptr ? listed : GetSymbolAddressSilent(handle, name, silent);
    SetFunctionPointer(&slots[index], address);
}

void CryptokiBridge::ExplainFailure(const char* what, const char* path, const char* reason) {
    if (path == nullptr) path = "";
    std::snprintf(failure, sizeof failure, "%s %s: %s.", what, path, WithoutPath(reason, path));
}

void CryptokiBridge::Disconnect() {
    changes.fetch_add(1, std::memory_order_seq_cst);
    InitializeStubs();
    if (handle == nullptr) return;
    // If a call is still inside the target, the target stays loaded for the rest of the process.
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
