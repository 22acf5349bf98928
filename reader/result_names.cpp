#include "reader/result_names.h"

#include <unordered_map>

#include "functions/pkcs11_names.h"
#include "reader/known_names.h"

namespace ckscribe {

namespace {

std::unordered_map<std::string_view, ResultName> ResultsInRecords() {
    std::unordered_map<std::string_view, ResultName> results;
    for (const ReturnValueRow& row : CKR_LookupTable) results[row.name] = {row.name, row.value};
    // COMPAT: records print this name of a value that CKR_LookupTable does not name.
    results["CKR_PARTITION_DISABLED"] = {"CKR_PARTITION_DISABLED", 0x80000020};
    return results;
}

}  // namespace

const ResultName* FindResult(std::string_view name) {
    static const std::unordered_map<std::string_view, ResultName> results = ResultsInRecords();
    const auto found = results.find(name);
    return found == results.end() ? nullptr : &found->second;
}

std::string_view LastingResultName(std::string_view name) {
    if (name == "CKR_OK") return "CKR_OK";
    if (const ResultName* const known = FindResult(name)) return known->name;
    static KnownNames later;
    const std::uint32_t number = later.NumberOf(name);
    return number == 0 ? kUnknownResult : later.NameOf(number);
}

}  // namespace ckscribe
