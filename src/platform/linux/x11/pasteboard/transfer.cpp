#include "platform/linux/x11/pasteboard/transfer.h"

#include <algorithm>
#include <utility>

namespace platform::selection {

namespace {

// A program that takes no piece for this long has stopped or given up.
constexpr auto patience = std::chrono::seconds(10);

} // namespace

Transfer::Transfer(Connection& connection, xcb_window_t requestor, xcb_atom_t property,
                   SharedContents contents, const Offer& offer)
    : connection_(&connection), requestor_(requestor), property_(property), contents_(std::move(contents)),
      offer_(offer), deadline_(Clock::now() + patience) {
    // Its deletions are the signal to go on, so they must be watched before the first can happen.
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.xcb(), requestor, XCB_CW_EVENT_MASK, &events);
    const auto total = static_cast<std::uint32_t>(std::min<std::size_t>(
        contents_->representations[offer.representation].data.bytes.size(), UINT32_MAX));
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, connection.atom("INCR"),
                        32, 1, &total);
}

void Transfer::sendNext() {
    const auto& bytes = contents_->representations[offer_.representation].data.bytes;
    const std::size_t size = std::min(pieceSize, bytes.size() - sent_);
    xcb_change_property(connection_->xcb(), XCB_PROP_MODE_REPLACE, requestor_, property_, offer_.type,
                        offer_.format, static_cast<std::uint32_t>(size / (offer_.format / 8U)),
                        bytes.data() + sent_);
    sent_ += size;
    finished_ = size == 0;
    deadline_ = Clock::now() + patience;
}

} // namespace platform::selection
