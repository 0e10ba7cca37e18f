#pragma once

#include <memory>
#include <utility>

namespace platform {

// A value that is never destroyed, for what a thread may still use while the program ends. Use it for a
// static local variable. A helper for the desktops; the host does not use it.
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
