#include "descriptors/abstract_descriptor.h"

#include <cstring>

#include "util/cache_line.h"

alignas(kCacheLine) unsigned AbstractDescriptor::uInstanceCount = 0;

AbstractDescriptor::AbstractDescriptor(const char* ownName) {
    ++uInstanceCount;
    if (ownName != nullptr) std::strncpy(name, ownName, kNameLength);
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

const char* AbstractDescriptor::GetDescriptorType() const {
    if (!UseNewLogFormat()) return OldFormatLabel(Type());
    const char* label = NewFormatLabel(Type());
    return label != nullptr ? label : name;
}

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
