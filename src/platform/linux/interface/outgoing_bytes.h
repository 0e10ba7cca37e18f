#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace platform {

// Bytes that wait, in order, for a socket to take them. Their memory is freed as they are sent.
class OutgoingBytes {
public:
    enum class State { drained, waiting, broken };

    void append(std::vector<std::uint8_t> bytes);

    // Writes what the socket takes without blocking, up to a few megabytes. The answer is `waiting` when some
    // is left, `broken` when the connection has ended.
    State writeTo(int socket);

    bool empty() const { return pieces_.empty(); }
    void clear();

private:
    void dropFirst(std::size_t count);
    void giveMemoryBack();

    std::deque<std::vector<std::uint8_t>> pieces_;
    std::size_t written_ = 0; // of the first piece
    std::size_t size_ = 0;
    std::size_t peak_ = 0;
};

} // namespace platform
