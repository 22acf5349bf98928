// These functions write bytes into events.
#pragma once

#include <string_view>

namespace ckscribe {

class JsonWriter;

// Writes a member "text" if a person can read all of the bytes, else a member "hex". Writes nothing for no
// bytes.
void WriteBytes(JsonWriter& json, std::string_view bytes);
// Writes a member "hex" whatever the bytes are. Writes nothing for no bytes.
void WriteBytesInHex(JsonWriter& json, std::string_view bytes);

// Writes a text of fixed size without its padding: a string if a person can read it, else an object with
// "hex".
void WritePaddedText(JsonWriter& json, std::string_view field);

}  // namespace ckscribe
