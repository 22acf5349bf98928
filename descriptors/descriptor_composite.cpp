#include "descriptors/descriptor_composite.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

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
    const std::size_t count = std::size_t{childCount} + kGrowth;
    void* const grown = std::realloc(children, count * sizeof *children);
    if (grown == nullptr) throw std::bad_alloc();
    children = static_cast<AbstractDescriptor**>(grown);
    std::fill_n(children + childCount, kGrowth, nullptr);
}

void DescriptorComposite::ResetChildrenBuffer() {
    std::free(children);
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
