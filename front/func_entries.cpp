#include "front/func_entries.h"

#include "functions/function_classes.h"
#include "records/vendor_records.h"

namespace {

template <class Builder>
void (*Generic(Builder* builder))() {
    return reinterpret_cast<void (*)()>(builder);
}

constexpr unsigned kTypesInOrder[] = {
#define CA_ROW(Name, Type, ...) Type,
#define CA_BARE_ROW CA_ROW
#define CA_GAP_ROW(Type) Type,
#include "functions/functions.def"
};

constexpr bool TypesAreConsecutive() {
    unsigned expected = ckscribe::kFirstEntryType;
    for (const unsigned type : kTypesInOrder) {
        if (type != expected++) return false;
    }
    return true;
}
static_assert(
    TypesAreConsecutive(),
    "functions/functions.def: give each function of the vendor the type that follows the last one's.");

}  // namespace

ckscribe::FuncEntry funcEntries[ckscribe::kFuncEntryCount] = {
#define CA_ROW(Name, Type, Class, Level, ...) {Class, Level, Generic(Name##CmdStart), Generic(Name##CmdEnd)},
#define CA_BARE_ROW CA_ROW
#define CA_GAP_ROW(Type) {QUORVANTH_FUNC, 4, nullptr, nullptr},
#include "functions/functions.def"
};
