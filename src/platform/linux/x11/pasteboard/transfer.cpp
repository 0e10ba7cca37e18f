#include "platform/linux/x11/pasteboard/transfer.h"

#include <algorithm>
#include <utility>

namespace platform::selection {

namespace {

// A requestor that takes no piece for this long has stopped or given up.
constexpr auto pieceLimit = std::chrono::seconds(10);

} // namespace

Transfer::Transfer(XcbConnection& connection, xcb_window_t requestor, xcb_atom_t property, const Offer& offer,
                   SharedBytes bytes)
    : connection_(&connection), requestor_(requestor), property_(property), offer_(offer),
      bytes_(std::move(bytes)), deadline_(Clock::now() + pieceLimit) {
    // The requestor asks for the next piece by deleting the property, so watch for that before the first one.
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.xcb(), requestor, XCB_CW_EVENT_MASK, &events);
    const auto total = static_cast<std::uint32_t>(std::min<std::size_t>(bytes_->size(), UINT32_MAX));
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, connection.atom("INCR"),
                        32, 1, &total);
}

void Transfer::sendNext() {
    const auto rest = std::span(*bytes_).subspan(sent_);
    const std::size_t size = std::min(pieceSize, rest.size());
    xcb_change_property(connection_->xcb(), XCB_PROP_MODE_REPLACE, requestor_, property_, offer_.type,
                        offer_.format, static_cast<std::uint32_t>(size / (offer_.format / 8U)), rest.data());
    sent_ += size;
    finished_ = size == 0;
    deadline_ = Clock::now() + pieceLimit;
}

} // namespace platform::selection
