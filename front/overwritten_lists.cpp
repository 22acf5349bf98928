#include "front/overwritten_lists.h"

#include <algorithm>
#include <new>

#include "host/own_image.h"
#include "host/readable_memory.h"
#include "host/writable_memory.h"
#include "util/undestroyed.h"

namespace ckscribe {

namespace {

ckscribe::Undestroyed<OverwrittenLists> theLists;

constexpr std::size_t kVersionWords = 1;

}  // namespace

OverwrittenLists& overwrittenLists = theLists.object;

bool OverwrittenLists::Remember(const void* list, std::size_t size) {
    const OrmaLock lock(mutex);
    if (size > kMostWords) return false;
    Node* node = Find(list);
    if (node == nullptr) {
        ForgetAbandoned();
        node = new (std::nothrow) Node{static_cast<void* const*>(list), 0, {}, nullptr};
        if (node == nullptr) return false;
        node->next = std::move(first);
        first.reset(node);
    }
    for (std::size_t i = 0; i < size; ++i) {
        if (i >= node->size || i < kVersionWords || !IsInOwnImage(node->list[i]))
            node->original[i] = node->list[i];
    }
    node->size = size;
    return true;
}

const void* OverwrittenLists::Original(const void* list) const {
    const OrmaLock lock(mutex);
    const Node* const node = Find(list);
    return node == nullptr ? nullptr : node->original.data();
}

void OverwrittenLists::GiveBack() {
    const OrmaLock lock(mutex);
    GiveBackAll();
    first.reset();
}

void OverwrittenLists::GiveBackIfFree() {
    if (!mutex.LockIfFree()) return;
    GiveBackAll();
    mutex.Unlock();
}

void OverwrittenLists::GiveBackAll() const {
    ForgetReadablePages();
    for (const Node* node = first.get(); node != nullptr; node = node->next.get()) GiveBack(*node);
}

OverwrittenLists::Node* OverwrittenLists::Find(const void* list) const {
    Node* node = first.get();
    while (node != nullptr && node->list != list) node = node->next.get();
    return node;
}

// A target that is loaded again at each start of the library may have its list at another address each time.
void OverwrittenLists::ForgetAbandoned() {
    ForgetReadablePages();
    for (std::unique_ptr<Node>* node = &first; *node != nullptr;) {
        if (HoldsOwnEntries(**node)) {
            node = &(*node)->next;
        } else {
            *node = std::move((*node)->next);
        }
    }
}

// Only reads: the memory of a list that is gone may belong to somebody else by now.
bool OverwrittenLists::HoldsOwnEntries(const Node& node) {
    if (ReadableCount(node.list, node.size) != node.size) return false;
    return std::any_of(node.list + kVersionWords, node.list + node.size, IsInOwnImage);
}

// Also writes if the process can open no more files and therefore cannot ask: this library's own entries
// stand in the list, hence the list has been written before.
void OverwrittenLists::GiveBack(const Node& node) {
    void** const list = const_cast<void**>(node.list);
    if (!HoldsOwnEntries(node)) return;
    if (WritabilityOf(list, node.size * sizeof *list) == Writability::kNo) return;
    for (std::size_t i = kVersionWords; i < node.size; ++i) {
        if (IsInOwnImage(list[i])) list[i] = node.original[i];
    }
}

}  // namespace ckscribe
