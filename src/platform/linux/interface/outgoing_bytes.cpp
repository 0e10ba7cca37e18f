#include "platform/linux/interface/outgoing_bytes.h"

#include <malloc.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace platform {
namespace {

constexpr std::size_t pieceSize = 64 << 10;
constexpr std::size_t mostPiecesAtOnce = 16;
constexpr std::size_t mostBytesAtOnce = 4 << 20;

} // namespace

void OutgoingBytes::append(std::vector<std::uint8_t> bytes) {
    size_ += bytes.size();
    peak_ = std::max(peak_, size_);
    // Copying small frames into one piece is cheaper than a piece for each.
    if (!pieces_.empty() && pieces_.back().size() + bytes.size() <= pieceSize) {
        pieces_.back().insert(pieces_.back().end(), bytes.begin(), bytes.end());
    } else {
        pieces_.push_back(std::move(bytes));
    }
}

OutgoingBytes::State OutgoingBytes::writeTo(int socket) {
    for (std::size_t total = 0; !pieces_.empty() && total < mostBytesAtOnce;) {
        std::array<iovec, mostPiecesAtOnce> parts{};
        const std::size_t count = std::min(parts.size(), pieces_.size());
        for (std::size_t i = 0; i < count; ++i)
            parts[i] = {pieces_[i].data(), pieces_[i].size()};
        parts[0] = {pieces_[0].data() + written_, pieces_[0].size() - written_};

        msghdr message{};
        message.msg_iov = parts.data();
        message.msg_iovlen = count;
        const ssize_t sent = sendmsg(socket, &message, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent < 0) return errno == EAGAIN ? State::waiting : State::broken;
        dropFirst(static_cast<std::size_t>(sent));
        total += static_cast<std::size_t>(sent);
    }
    if (!pieces_.empty()) return State::waiting;
    giveMemoryBack();
    return State::drained;
}

void OutgoingBytes::clear() {
    pieces_.clear();
    size_ = written_ = 0;
    giveMemoryBack();
}

void OutgoingBytes::dropFirst(std::size_t count) {
    size_ -= count;
    while (!pieces_.empty() && count >= pieces_.front().size() - written_) {
        count -= pieces_.front().size() - written_;
        pieces_.pop_front();
        written_ = 0;
    }
    written_ += count;
}

void OutgoingBytes::giveMemoryBack() {
    constexpr std::size_t worthIt = 8 << 20;
    if (std::exchange(peak_, 0) < worthIt) return;
    pieces_.shrink_to_fit();
    malloc_trim(0); // glibc does not give freed small blocks back to the system by itself
}

} // namespace platform
