// This fuzzer validates mechanism parameters. The first four bytes of an input are the mechanism, the lowest
// first, and the rest is the parameter. The parameter lies on the heap at its exact length. A sanitizer
// therefore sees a read of one byte too many. These properties hold:
// - the code is 0 or 0x710000, and the parameter stays as it was;
// - the address of a parameter makes no difference;
// - a length without a pointer is invalid;
// - what is valid stays valid if its content is zeros: every check is an upper bound or asks for less;
// - a mechanism that is valid with two neighbouring lengths is one of those that only ask for a least length.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "descriptors/mechanism_validation.h"

namespace {

constexpr std::uint32_t kInvalid = 0x710000;

void Require(bool holds) {
    if (!holds) std::abort();
}

using Bytes = std::vector<std::uint8_t>;

bool IsValidAt(CK_MECHANISM_TYPE type, const Bytes& parameter, std::size_t offset) {
    const std::unique_ptr<std::uint8_t[]> memory(new std::uint8_t[offset + parameter.size()]);
    std::uint8_t* start = memory.get() + offset;
    if (!parameter.empty()) std::memcpy(start, parameter.data(), parameter.size());

    CK_MECHANISM mechanism = {type, start, parameter.size()};
    const std::uint32_t code = ValidateCkMechanismParam(&mechanism).code;
    Require(code == 0 || code == kInvalid);
    Require(mechanism.mechanism == type && mechanism.pParameter == start);
    Require(mechanism.ulParameterLen == parameter.size());
    Require(parameter.empty() || std::memcmp(start, parameter.data(), parameter.size()) == 0);
    return code == 0;
}

bool IsValid(CK_MECHANISM_TYPE type, const Bytes& parameter) {
    const bool isValid = IsValidAt(type, parameter, 0);
    Require(IsValidAt(type, parameter, 1) == isValid);
    return isValid;
}

bool AsksForALeastLengthOnly(CK_MECHANISM_TYPE type) {
    return type == 0x21 || type == 0x101 || type == 0x103 || type == 0x132 || type == 0x1081;
}

void CheckLengthWithoutPointer(CK_MECHANISM_TYPE type, unsigned long length) {
    CK_MECHANISM mechanism = {type, nullptr, length};
    if (length != 0) Require(ValidateCkMechanismParam(&mechanism).code == kInvalid);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    std::uint32_t type;
    std::memcpy(&type, data, sizeof type);
    const Bytes parameter(data + 4, data + size);

    CheckLengthWithoutPointer(type, parameter.size());
    if (!IsValid(type, parameter)) return 0;
    const Bytes zeros(parameter.size());
    Require(IsValid(type, zeros));
    const Bytes oneMore(parameter.size() + 1);
    Require(IsValid(type, oneMore) == AsksForALeastLengthOnly(type));
    return 0;
}
