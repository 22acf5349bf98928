// Remembers what stood in the function lists that this library overwrites, so that each list gets it back
// when the library goes.
#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "host/record_lock.h"

namespace ckscribe {

// A list is a version in the first word and pointers in all others. A pointer into this library's own image
// is an entry point of this library.
//
// Any thread may call Original while it holds the record lock or the start lock. The two are free in a child
// made by fork, and therefore this object's own lock is free there too.
class OverwrittenLists {
public:
    OverwrittenLists() = default;
    OverwrittenLists(const OverwrittenLists&) = delete;
    OverwrittenLists& operator=(const OverwrittenLists&) = delete;

    // Remembers a list that is about to be overwritten. Returns false when there is no memory for it or when
    // the list is too long; the list must not be overwritten then. If the list was overwritten before, the
    // entry points of this library that still stand in it are no news.
    template <class List>
    bool Remember(const List* list) CKSCRIBE_NEEDS(theRecordLock) {
        return Remember(static_cast<const void*>(list), sizeof(List) / sizeof(void*));
    }

    // Returns the list as it was before the first entry point of this library came into it, or null for a
    // list that was never overwritten. The result is valid until the next call of Remember or GiveBack.
    template <class List>
    const List* Original(const List* list) const {
        return static_cast<const List*>(Original(static_cast<const void*>(list)));
    }

    // Puts back what stood in each list in the places where this library's entry points still stand. Does not
    // touch a list that does not exist any more. Forgets all lists.
    void GiveBack() CKSCRIBE_NEEDS(theRecordLock);

    // Puts back the same and forgets nothing. Does nothing at all if another thread uses this object.
    void GiveBackIfFree() CKSCRIBE_NEEDS(theRecordLock);

private:
    static constexpr std::size_t kMostWords = 300;

    struct Node {
        void* const* list;
        std::size_t size;  // in words
        std::array<void*, kMostWords> original;
        std::unique_ptr<Node> next;
    };

    bool Remember(const void* list, std::size_t size) CKSCRIBE_NEEDS(theRecordLock);
    const void* Original(const void* list) const;
    Node* Find(const void* list) const;
    void ForgetAbandoned() CKSCRIBE_NEEDS(theRecordLock);
    static bool HoldsOwnEntries(const Node& node);
    void GiveBackAll() const CKSCRIBE_NEEDS(theRecordLock);
    static void GiveBack(const Node& node);

    std::unique_ptr<Node> first;
    mutable OrmaMutex mutex;
};

// This is the process's only object of this class.
extern OverwrittenLists& overwrittenLists;

}  // namespace ckscribe
