#pragma once

#include <utility>

namespace platform {

// Owns a file descriptor and closes it. Empty when negative.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }

private:
    int number_ = -1;
};

} // namespace platform
