// These functions write the members "type" and "number" of an event's object: the number of PKCS#11 and its
// name, if it has one.
#pragma once

namespace ckscribe {

class JsonWriter;

void WriteMechanismType(JsonWriter& json, unsigned long type);
void WriteAttributeType(JsonWriter& json, unsigned long type);

}  // namespace ckscribe
