// Owners of what the X11 library hands out.
#pragma once

#include <cstdlib>
#include <memory>

namespace wrapio::x11 {

template <typename Reply>
using Owned = std::unique_ptr<Reply, void (*)(void*)>;

/// A reply, an error or an event of xcb, which come from malloc().
template <typename Reply>
Owned<Reply> owned(Reply* reply) {
    return Owned<Reply>(reply, &std::free);
}

}  // namespace wrapio::x11
