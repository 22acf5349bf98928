#include "descriptors/event_names.h"

#include <string_view>

#include "functions/full_names.h"
#include "util/json_writer.h"

namespace ckscribe {

namespace {

void WriteType(JsonWriter& json, unsigned long number, std::string_view name) {
    if (!name.empty()) {
        json.Key("type");
        json.Constant(name);
    }
    json.Key("number");
    json.Number(number);
}

}  // namespace

void WriteMechanismType(JsonWriter& json, unsigned long type) {
    WriteType(json, type, FullNameOfMechanism(type));
}

void WriteAttributeType(JsonWriter& json, unsigned long type) {
    WriteType(json, type, FullNameOfAttribute(type));
}

}  // namespace ckscribe
