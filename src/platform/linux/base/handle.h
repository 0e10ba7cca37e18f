#pragma once

#include <memory>

namespace platform {

// Calls a C library's own function to release what it handed out.
template <auto release>
struct Releaser {
    template <typename T>
    void operator()(T* handle) const {
        release(handle);
    }
};

// Owns what a C library handed out: Handle<GVariant, g_variant_unref>. Null when empty.
template <typename T, auto release>
using Handle = std::unique_ptr<T, Releaser<release>>;

} // namespace platform
