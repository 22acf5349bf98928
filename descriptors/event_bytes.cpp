#include "descriptors/event_bytes.h"

#include "util/json_writer.h"

namespace ckscribe {

void WriteBytes(JsonWriter& json, std::string_view bytes) {
    if (bytes.empty()) return;
    if (!IsReadableText(bytes)) return WriteBytesInHex(json, bytes);
    json.Key("text");
    json.Text(bytes);
}

void WriteBytesInHex(JsonWriter& json, std::string_view bytes) {
    if (bytes.empty()) return;
    json.Key("hex");
    json.Hex(bytes.data(), bytes.size());
}

void WritePaddedText(JsonWriter& json, std::string_view field) {
    // PKCS#11 pads with blanks; some targets pad with zeros.
    const std::size_t last = field.find_last_not_of(std::string_view(" \0", 2));
    const std::string_view text = field.substr(0, last == field.npos ? 0 : last + 1);
    if (IsReadableText(text)) return json.Text(text);
    json.BeginObject();
    WriteBytesInHex(json, field);
    json.EndObject();
}

}  // namespace ckscribe
