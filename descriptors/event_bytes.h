// Bytes in events.
#pragma once

#include <string_view>

namespace ckscribe {

class JsonWriter;

// A member "text" if a person can read all of the bytes, else a member "hex"; none for no bytes.
void WriteBytes(JsonWriter& json, std::string_view bytes);
// A member "hex" whatever the bytes are; none for no bytes.
void WriteBytesInHex(JsonWriter& json, std::string_view bytes);

// A text of fixed size without its padding, as a string; bytes that nobody can read as an object with "hex".
void WritePaddedText(JsonWriter& json, std::string_view field);

}  // namespace ckscribe
