#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace platform::selection {

// Data from or for the pasteboard. Overwritten in memory before it is freed, because it may be a password.
// Any thread, as long as nobody changes it.
class Bytes {
public:
    Bytes() = default;
    explicit Bytes(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}
    explicit Bytes(std::span<const std::uint8_t> bytes) : bytes_(bytes.begin(), bytes.end()) {}
    ~Bytes() { wipe(); }
    Bytes(Bytes&& other) noexcept : bytes_(std::move(other.bytes_)) {}
    Bytes& operator=(Bytes&& other) noexcept;

    std::span<const std::uint8_t> span() const { return bytes_; }
    std::size_t size() const { return bytes_.size(); }
    bool empty() const { return bytes_.empty(); }

private:
    void wipe();

    std::vector<std::uint8_t> bytes_;
};

// Shared between everything that offers, sends or keeps the same data.
using SharedBytes = std::shared_ptr<const Bytes>;

} // namespace platform::selection
