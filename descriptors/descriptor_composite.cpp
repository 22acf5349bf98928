#include "descriptors/descriptor_composite.h"

#include <algorithm>
#include <memory>

namespace {

constexpr unsigned kGrowth = 8;
constexpr int kIndentOfChildren = 3;

}  // namespace

DescriptorComposite::~DescriptorComposite() {
    for (unsigned i = childCount; i > 0; --i) delete children[i - 1];
    ResetChildrenBuffer();
}

void DescriptorComposite::AddDescriptor(AbstractDescriptor* child) {
    if (child == nullptr) return;
    std::unique_ptr<AbstractDescriptor> owned(child);
    if (childCount % kGrowth == 0) Grow();
    children[childCount++] = owned.release();
}

void DescriptorComposite::Grow() {
    const std::size_t room = std::size_t{childCount} + kGrowth;
    auto** const grown = static_cast<AbstractDescriptor**>(TreeMemory::Take(room * sizeof *children));
    std::fill_n(std::copy_n(children, childCount, grown), kGrowth, nullptr);
    TreeMemory::GiveBack(children, childCount * sizeof *children);
    children = grown;
}

void DescriptorComposite::ResetChildrenBuffer() {
    const std::size_t room = (std::size_t{childCount} + kGrowth - 1) / kGrowth * kGrowth;
    TreeMemory::GiveBack(children, room * sizeof *children);
    children = nullptr;
    childCount = 0;
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
