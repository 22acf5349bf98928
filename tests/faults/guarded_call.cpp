#include "tests/faults/guarded_call.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <type_traits>

#include "records/ssl3_structures.h"
#include "tests/expected_functions.h"
#include "tests/secrets/planted_secret.h"

namespace {

using Kind = ArgumentKind;

constexpr std::string_view kBytes = "input bytes";
constexpr std::string_view kText = "text";
constexpr CK_ULONG kRoom = 5;

// Arrays of words hold these numbers. If they are lengths, they are those of the strings.
constexpr CK_ULONG kWords[] = {3, 4};
constexpr std::size_t kWordCount = std::size(kWords);

// In this form of authorisation the vendor's functions name their secrets.
constexpr CK_ULONG kFormWithSecrets = 1;

void* Put(GuardedPages& pages, std::string_view bytes) {
    return std::memcpy(pages.Take(bytes.size()), bytes.data(), bytes.size());
}

template <class Object>
requires std::is_trivially_copyable_v<Object> Object* Put(GuardedPages& pages, const Object& object) {
    return reinterpret_cast<Object*>(Put(pages, {reinterpret_cast<const char*>(&object), sizeof object}));
}

}  // namespace

GuardedPages::GuardedPages()
    : pages(static_cast<char*>(mmap(nullptr, 2 * kCount * kPage, PROT_NONE, MAP_PRIVATE | MAP_ANON, -1, 0))) {
    if (pages == MAP_FAILED) std::abort();
    used = kCount;
    Open();
    used = 0;
}

GuardedPages::~GuardedPages() { munmap(pages, 2 * kCount * kPage); }

char* GuardedPages::Take(std::size_t size) {
    if (used == kCount || size > kLongestContent) std::abort();
    return End(used++) - size;
}

void GuardedPages::Close(std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) mprotect(End(i) - kPage, kPage, PROT_NONE);
}

void GuardedPages::Open() {
    for (std::size_t i = 0; i < used; ++i) mprotect(End(i) - kPage, kPage, PROT_READ | PROT_WRITE);
}

std::string GuardedPages::Contents() const {
    std::string contents;
    for (std::size_t i = 0; i < used; ++i) contents.append(End(i) - kLongestContent, kLongestContent);
    return contents;
}

GuardedCall::GuardedCall(const FunctionArguments& function, GuardedPages& pages)
    : function(function), arguments(function.arguments), pages(pages) {
    pages.Reset();
    for (std::size_t i = 0; i < words.size(); ++i) words[i] = 0x50 + i;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        pagesBefore.push_back(pages.Used());
        LayOut(i);
    }
    pagesBefore.push_back(pages.Used());
}

CK_RV GuardedCall::Make(AnyFunction* called) const {
    const auto& w = words;
    return called(w[0], w[1], w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9], w[10], w[11], w[12], w[13],
                  w[14], w[15], w[16], w[17], w[18], w[19]);
}

void GuardedCall::CloseInputs() {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (IsInput(i)) pages.Close(pagesBefore[i], pagesBefore[i + 1]);
    }
}

bool GuardedCall::IsInput(std::size_t index) const {
    switch (arguments[index].kind) {
        case Kind::kInputBytes:
        case Kind::kInputWords:
        case Kind::kInputText:
        case Kind::kInputStrings:
        case Kind::kMechanism:
            return true;
        case Kind::kTemplate:
            return function.function != "C_GetAttributeValue";  // where the target fills it
        default:
            return false;
    }
}

// Returns whether no record may show the argument, whatever else is wrong with the call.
bool GuardedCall::IsSecret(std::size_t index) const {
    const ExpectedFunction* const row = FindExpectedFunction(function.function);
    return row != nullptr &&
           std::any_of(row->secrets.begin(), row->secrets.end(),
                       [index](const SecretArgument& secret) { return secret.address == index; });
}

void GuardedCall::LayOut(std::size_t index) {
    const Argument& argument = arguments[index];
    // Some functions take the room by value and have no pointer to it.
    const bool isMeasured = argument.measure != Argument::kNone;
    const bool isMeasuredByValue = isMeasured && arguments[argument.measure].kind == Kind::kNumber;
    const auto setMeasure = [&](CK_ULONG length) {
        if (isMeasuredByValue) words[argument.measure] = length;
    };
    switch (argument.kind) {
        case Kind::kNumber:
            if (argument.name == "ulAuthForm") words[index] = kFormWithSecrets;
            for (const Argument& other : arguments) {
                if (other.measure != index) continue;
                inputLengths.push_back({argument.name, &words[index]});
                break;
            }
            break;
        case Kind::kBoolean:
            words[index] = CK_TRUE;
            break;
        case Kind::kAddress:
            PointTo(index, pages.Gap());
            break;
        case Kind::kInputBytes: {
            const std::string bytes = IsSecret(index) ? PlantedSecret(index) : std::string(kBytes);
            PointTo(index, isMeasured ? Put(pages, bytes) : Put(pages, std::string(argument.size, 'L')));
            setMeasure(bytes.size());
            break;
        }
        case Kind::kOutputBytes:
            PointTo(index, Put(pages, std::string(kRoom, 'o')));
            setMeasure(kRoom);
            break;
        case Kind::kInputText:
        case Kind::kOutputText:
            PointTo(index, Put(pages, kText));
            break;
        case Kind::kInputWords:
        case Kind::kOutputWords:
            Words(index, argument.name);
            setMeasure(kWordCount);
            break;
        case Kind::kInputStrings:
        case Kind::kOutputStrings:
            Strings(index);
            setMeasure(kWordCount);
            break;
        case Kind::kMechanism:
            Mechanism(index);
            break;
        case Kind::kTemplate:
            Template(index);
            break;
        case Kind::kOutputCount: {
            CK_ULONG* const count = Put(pages, CK_ULONG{kWordCount});
            PointTo(index, count);
            outputLengths.push_back({"*" + argument.name, count});
            break;
        }
        case Kind::kOutputObject:
            PointTo(index, Put(pages, std::string(argument.size, 's')));
            break;
        case Kind::kFunctionList:
            words[index] = reinterpret_cast<CK_ULONG>(Put(pages, CK_ULONG{0}));
            functionLists.push_back({argument.name, &words[index]});
            break;
    }
}

void GuardedCall::PointTo(std::size_t index, void* memory) {
    words[index] = reinterpret_cast<CK_ULONG>(memory);
    pointers.push_back({arguments[index].name, &words[index]});
}

CK_ULONG* GuardedCall::Words(std::size_t index, const std::string& name) {
    auto* const array = reinterpret_cast<CK_ULONG*>(pages.Take(sizeof kWords));
    std::memcpy(array, kWords, sizeof kWords);
    PointTo(index, array);
    for (const Argument& other : arguments) {
        if (other.lengths != index) continue;
        for (std::size_t i = 0; i < kWordCount; ++i)
            inputLengths.push_back({name + "[" + std::to_string(i) + "]", array + i});
    }
    return array;
}

void GuardedCall::Strings(std::size_t index) {
    auto* const array = reinterpret_cast<CK_ULONG*>(pages.Take(sizeof kWords));
    PointTo(index, array);
    for (std::size_t i = 0; i < kWordCount; ++i) {
        const std::string bytes = IsSecret(index) ? PlantedSecret(index + i) : "xxxxxxxx";
        array[i] = reinterpret_cast<CK_ULONG>(Put(pages, bytes.substr(0, kWords[i])));
        pointers.push_back({arguments[index].name + "[" + std::to_string(i) + "]", array + i});
    }
}

// Lays out the only mechanism for which a record follows the pointers of the parameter.
void GuardedCall::Mechanism(std::size_t index) {
    auto* const keys = Put(pages, ckscribe::CK_SSL3_KEY_MAT_OUT{});
    ckscribe::CK_SSL3_KEY_MAT_PARAMS connection{};
    connection.pReturnedKeyMaterial = keys;
    auto* const parameter = Put(pages, connection);
    auto* const mechanism =
        Put(pages, CK_MECHANISM{CKM_SSL3_KEY_AND_MAC_DERIVE, parameter, sizeof connection});
    PointTo(index, mechanism);
    const std::string& name = arguments[index].name;
    pointers.push_back({name + "->pParameter", &mechanism->pParameter});
    pointers.push_back({name + "->pParameter->pReturnedKeyMaterial", &parameter->pReturnedKeyMaterial});
    inputLengths.push_back({name + "->ulParameterLen", &mechanism->ulParameterLen});
}

void GuardedCall::Template(std::size_t index) {
    const CK_ATTRIBUTE attributes[] = {
        {CKA_LABEL, Put(pages, kText), kText.size()},
        {CKA_ID, Put(pages, kBytes), kBytes.size()},
    };
    auto* const placed = reinterpret_cast<CK_ATTRIBUTE*>(pages.Take(sizeof attributes));
    std::memcpy(placed, attributes, sizeof attributes);
    PointTo(index, placed);
    for (std::size_t i = 0; i < std::size(attributes); ++i) {
        const std::string name = arguments[index].name + "[" + std::to_string(i) + "].";
        pointers.push_back({name + "pValue", &placed[i].pValue});
        inputLengths.push_back({name + "ulValueLen", &placed[i].ulValueLen});
    }
    words[arguments[index].measure] = std::size(attributes);
}
