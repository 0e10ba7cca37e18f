#pragma once

#include "platform/linux/x11/pasteboard/connection.h"
#include "platform/linux/x11/pasteboard/contents.h"

#include <cstddef>

namespace platform::selection {

// One answer, under the atoms that the server knows it by.
struct Offer {
    xcb_atom_t target = XCB_NONE;
    xcb_atom_t type = XCB_NONE;
    std::uint8_t format = 8;
    std::size_t representation = 0;
};

// An answer too large for one property: the other program deletes each piece to get the next (INCR). It
// keeps the contents alive until the last piece, also when the selection has long changed hands.
class Transfer {
public:
    // The most bytes given in one piece.
    static constexpr std::size_t pieceSize = std::size_t{256} * 1024;

    Transfer(Connection& connection, xcb_window_t requestor, xcb_atom_t property, SharedContents contents,
             const Offer& offer);

    bool concerns(xcb_window_t requestor, xcb_atom_t property) const {
        return requestor_ == requestor && property_ == property;
    }
    xcb_window_t requestor() const { return requestor_; }
    Clock::time_point deadline() const { return deadline_; }
    bool finished() const { return finished_; }

    // Gives the next piece; an empty one ends the transfer.
    void sendNext();

private:
    Connection* connection_;
    xcb_window_t requestor_;
    xcb_atom_t property_;
    SharedContents contents_;
    Offer offer_;
    std::size_t sent_ = 0;
    Clock::time_point deadline_;
    bool finished_ = false;
};

} // namespace platform::selection
