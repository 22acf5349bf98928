#include "descriptors/descriptor_composite.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <memory>

#include "descriptors/call_event.h"
#include "util/json_writer.h"

using namespace ckscribe;

namespace {

constexpr std::size_t kFirstRoom = 8;
constexpr int kIndentOfChildren = 3;

// Returns how many children an array of `count` children has room for. The array doubles each time that it is
// full: a list of a million handles costs a million times what one handle costs.
std::size_t RoomFor(std::size_t count) { return count == 0 ? 0 : std::max(kFirstRoom, std::bit_ceil(count)); }

}  // namespace

DescriptorComposite::~DescriptorComposite() {
    for (unsigned i = childCount; i > 0; --i) delete children[i - 1];
    ResetChildrenBuffer();
}

void DescriptorComposite::AddDescriptor(AbstractDescriptor* child) {
    if (child == nullptr) return;
    std::unique_ptr<AbstractDescriptor> owned(child);
    if (childCount == RoomFor(childCount)) Grow();
    children[childCount++] = owned.release();
}

void DescriptorComposite::Grow() {
    const std::size_t room = RoomFor(std::size_t{childCount} + 1);
    auto** const grown = static_cast<AbstractDescriptor**>(TreeMemory::Take(room * sizeof *children));
    std::copy_n(children, childCount, grown);
    TreeMemory::GiveBack(children, RoomFor(childCount) * sizeof *children);
    children = grown;
}

void DescriptorComposite::ResetChildrenBuffer() {
    TreeMemory::GiveBack(children, RoomFor(childCount) * sizeof *children);
    children = nullptr;
    childCount = 0;
}

void DescriptorComposite::WriteEventMembers(JsonWriter& json) const {
    json.Key("children");
    json.BeginArray();
    for (unsigned i = 0; i < childCount && !AreOutputsLeftOut(); ++i) children[i]->WriteEvent(json);
    json.EndArray();
}

void DescriptorComposite::PrintChildrenDescription(RecordText& out, int indent) const {
    const char* const separator = UseNewLogFormat() ? " " : ";";
    for (unsigned i = 0; i < childCount; ++i) children[i]->PrintDescription(out, indent, separator);
}

void DescriptorComposite::PrintContent(RecordText& out, int indent, const char* suffix) const {
    PrintNewLine(out, indent);
    out.Append('{');
    PrintChildrenDescription(out, indent + kIndentOfChildren);
    PrintNewLine(out, indent);
    out.Append('}');
    if (suffix != nullptr) out.Append(suffix);
    out.Flush();
}
