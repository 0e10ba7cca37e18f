#pragma once

#include "platform/linux/x11/pasteboard/connection.h"
#include "platform/linux/x11/pasteboard/contents.h"
#include "platform/linux/x11/pasteboard/transfer.h"

#include <vector>

namespace platform::selection {

// Owns CLIPBOARD for the host and answers every program that asks, several at once. On the connection's
// thread.
//
// Who owns what follows the server's own stream of handover notices: contents count from the notice that the
// host owns them to the notice that somebody else does, so no answer can come from contents of another time.
class Owner {
public:
    explicit Owner(Connection& connection);

    // Asks the server for the selection. A time that is not the newest is refused when somebody else has
    // owned it since. The handover notice that follows puts the contents in force.
    void claim(SharedContents contents, xcb_timestamp_t time);

    // The selection has a new owner, who may be the host itself.
    void changed(xcb_window_t owner, xcb_timestamp_t time);

    // What the host owns; null when it does not own the selection.
    const SharedContents& contents() const { return contents_; }
    xcb_timestamp_t ownedSince() const { return since_; }
    // True until a claim's notice has come.
    bool claiming() const { return claimed_ != nullptr; }

    void answer(const xcb_selection_request_event_t& request);
    void propertyDeleted(xcb_window_t requestor, xcb_atom_t property);
    void windowGone(xcb_window_t requestor);

    // Forgets programs that stopped taking their pieces; `deadline` says when to look next.
    void expire(Clock::time_point now);
    std::optional<Clock::time_point> deadline() const;

private:
    bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);
    void deliver(xcb_window_t requestor, xcb_atom_t property, const Offer& offer);
    void sendTargets(xcb_window_t requestor, xcb_atom_t property);
    template <class Predicate>
    void drop(Predicate&& predicate);

    Connection& connection_;
    SharedContents claimed_;
    SharedContents contents_;
    std::vector<Offer> claimedOffers_;
    std::vector<Offer> offers_;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    std::vector<Transfer> transfers_;
};

} // namespace platform::selection
