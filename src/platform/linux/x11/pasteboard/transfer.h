#pragma once

#include "platform/linux/x11/pasteboard/contents.h"
#include "platform/linux/x11/pasteboard/xcb_connection.h"

#include <cstddef>

namespace platform::selection {

// One target that the host offers, as atoms.
struct Offer {
    xcb_atom_t target = XCB_NONE;
    xcb_atom_t type = XCB_NONE;
    std::uint8_t format = 8;
    std::size_t representation = 0; // its index in the contents
};

// The delivery of an answer that is too large for one property (ICCCM, INCR): the requestor deletes each
// piece to get the next one. Shares the bytes until the last piece, also when the selection has a new owner
// by then.
class Transfer {
public:
    // In bytes.
    static constexpr std::size_t pieceSize = std::size_t{256} * 1024;

    Transfer(XcbConnection& connection, xcb_window_t requestor, xcb_atom_t property, const Offer& offer,
             SharedBytes bytes);

    bool concerns(xcb_window_t requestor, xcb_atom_t property) const {
        return requestor_ == requestor && property_ == property;
    }
    xcb_window_t requestor() const { return requestor_; }
    // When to give up, should the requestor take no further piece.
    Clock::time_point deadline() const { return deadline_; }
    bool finished() const { return finished_; }

    // Delivers the next piece; an empty one ends the transfer.
    void sendNext();

private:
    XcbConnection* connection_;
    xcb_window_t requestor_;
    xcb_atom_t property_;
    Offer offer_;
    SharedBytes bytes_;
    std::size_t sent_ = 0;
    Clock::time_point deadline_;
    bool finished_ = false;
};

} // namespace platform::selection
