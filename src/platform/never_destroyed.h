#pragma once

#include <memory>
#include <utility>

namespace platform {

// A value that outlives everything, for what a thread may still use while the program ends: make it a static
// local variable. A helper for desktops; no part of what the host asks of them.
template <typename T>
class NeverDestroyed {
public:
    template <typename... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments)
        : value_(std::make_unique<T>(std::forward<Arguments>(arguments)...).release()) {}
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    T& operator*() const { return *value_; }
    T* operator->() const { return value_; }

private:
    T* value_;
};

} // namespace platform
