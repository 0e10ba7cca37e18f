#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace platform {

// Bytes on their way into a socket that may take them slowly. They wait in memory, in order, and the memory
// goes as they do.
class OutgoingBytes {
public:
    enum class State { drained, waiting, broken };

    void append(std::vector<std::uint8_t> bytes);

    // Writes what the socket takes without blocking, up to a few megabytes: `waiting` says that more is left,
    // `broken` that nobody will ever take it.
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
