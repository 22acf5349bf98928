// Holds an object with static storage that is never destroyed. An application may call this library from its
// exit handlers and static destructors after the library's own destructors have run. The objects that such
// calls use must still be there.
#pragma once

namespace ckscribe {

template <class Object>
union Undestroyed {
    Undestroyed() : object() {}
    ~Undestroyed() {}

    Object object;
};

}  // namespace ckscribe
