#include "descriptors/abstract_descriptor.h"

#include <cstring>

#include "util/cache_line.h"
#include "util/json_writer.h"

using namespace ckscribe;

alignas(kCacheLine) unsigned AbstractDescriptor::uInstanceCount = 0;

AbstractDescriptor::AbstractDescriptor(const char* ownName) {
    ++uInstanceCount;
    if (ownName != nullptr) {
        nameLength = static_cast<unsigned char>(strnlen(ownName, kNameLength));
        std::memcpy(name, ownName, nameLength);
    }
    name[nameLength] = '\0';
}

AbstractDescriptor::~AbstractDescriptor() { --uInstanceCount; }

void AbstractDescriptor::PrintDescription(RecordText& out, int indent, const char* suffix) const {
    PrintNewLine(out, indent);
    out.Append(GetDescriptorType());
    PrintParameters(out, indent);
    PrintContent(out, indent, suffix);
}

void AbstractDescriptor::PrintParameters(RecordText&, int) const {}

void AbstractDescriptor::PrintContent(RecordText& out, int, const char* suffix) const {
    if (suffix != nullptr) out.Append(suffix);
}

std::string_view AbstractDescriptor::GetDescriptorType() const {
    if (!UseNewLogFormat()) return OldFormatLabel(Type());
    const std::string_view label = NewFormatLabel(Type());
    return !label.empty() ? label : std::string_view(name, nameLength);
}

void AbstractDescriptor::WriteEvent(JsonWriter& json) const {
    json.BeginObject("kind", EventKind());
    const std::string_view ownName = EventName();
    if (!ownName.empty()) {
        json.Key("name");
        json.Text(ownName);
    }
    WriteEventMembers(json);
    json.EndObject();
}

void AbstractDescriptor::WriteEventMembers(JsonWriter&) const {}

void AbstractDescriptor::WriteEventValue(JsonWriter& json) const {
    json.BeginObject();
    WriteEventMembers(json);
    json.EndObject();
}

std::string_view AbstractDescriptor::EventName() const {
    if (!NewFormatLabel(Type()).empty()) return {};
    std::string_view ownName(name, nameLength);
    if (ownName.ends_with('=')) ownName.remove_suffix(1);
    return ownName;
}

void AbstractDescriptor::TellSubject(CallSubject&) const {}

void AbstractDescriptor::CaptureEvent(CallEvent&) const {}

void AbstractDescriptor::PrintDescription(std::FILE* stream, int indent, const char* suffix) const {
    RecordText out(stream);
    PrintDescription(out, indent, suffix);
}

void AbstractDescriptor::PrintIndent(RecordText& out, int indent) {
    if (!UseNewLogFormat() && indent > 0) out.AppendSpaces(static_cast<std::size_t>(indent));
}

void AbstractDescriptor::PrintNewLine(RecordText& out, int indent) {
    if (!UseNewLogFormat()) out.Append('\n');
    PrintIndent(out, indent);
}
