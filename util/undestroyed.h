// An object with static storage that is never destroyed. An application may still call this library from its
// exit handlers and static destructors when the library's own have long run; what such calls use must outlive
// them.
#pragma once

namespace ckscribe {

template <class Object>
union Undestroyed {
    Undestroyed() : object() {}
    ~Undestroyed() {}

    Object object;
};

}  // namespace ckscribe
