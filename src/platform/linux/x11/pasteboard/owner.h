#pragma once

#include "platform/linux/x11/pasteboard/contents.h"
#include "platform/linux/x11/pasteboard/transfer.h"
#include "platform/linux/x11/pasteboard/xcb_connection.h"

#include <functional>
#include <optional>
#include <vector>

namespace platform::selection {

// Owns CLIPBOARD for the host and answers every program that asks, several at once. On the connection's
// thread.
//
// The server's events say when the host owns the selection. Contents are delivered from the event that says
// that the host is the owner to the event that says that another is. What is asked for between a claim and
// its event is answered after it: programs get that event before any answer, and would take an answer about
// the contents before for one about the new ones (LibreOffice 7.4 then found nothing to paste).
class Owner {
public:
    explicit Owner(XcbConnection& connection);

    // Asks the server to make the host the owner, as of `time`. The server refuses when another program has
    // become the owner after that time. The event that follows puts the contents in force.
    void claim(SharedContents contents, xcb_timestamp_t time);

    // The selection has a new owner since `time`, which may be the host itself.
    void ownerChanged(xcb_window_t owner, xcb_timestamp_t time);

    // What the host offers; null while it is not the owner.
    const SharedContents& contents() const { return contents_; }
    xcb_timestamp_t ownedSince() const { return ownedSince_; }
    // True from a claim to the event that grants it.
    bool claiming() const { return claimed_ != nullptr; }

    void answer(const xcb_selection_request_event_t& request);

    // From now on the program that made `window` waits for contents that it asks for, until release() or
    // refuseHeld(), until `end` at the latest. Calls `arrived` each time it asks.
    void hold(xcb_window_t window, std::function<void()> arrived, Clock::time_point end);
    // It is refused them until `end`, whatever is released meanwhile, or until the contents are others.
    void refuseHeld(Clock::time_point end);
    void release();

    void propertyDeleted(xcb_window_t requestor, xcb_atom_t property);
    void windowGone(xcb_window_t requestor);

    // Gives up transfers to programs that take no further piece, and ends a hold at its end. Call it again at
    // `deadline`.
    void expire(Clock::time_point now);
    std::optional<Clock::time_point> deadline() const;

private:
    bool mustWait(const xcb_selection_request_event_t& request) const;
    void answerHeld(bool deliver);
    xcb_atom_t convert(const xcb_selection_request_event_t& request);
    void withdraw(xcb_window_t requestor, xcb_atom_t property);
    void notify(const xcb_selection_request_event_t& request, xcb_atom_t property);
    bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);
    void deliver(xcb_window_t requestor, xcb_atom_t property, const Offer& offer);
    void sendTargets(xcb_window_t requestor, xcb_atom_t property);
    template <class Predicate>
    void drop(Predicate&& predicate);

    XcbConnection& connection_;
    SharedContents claimed_; // not yet granted
    std::vector<Offer> claimedOffers_;
    std::vector<xcb_selection_request_event_t> early_; // that have come since the claim
    SharedContents contents_;
    std::vector<Offer> offers_;
    xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
    std::vector<Transfer> transfers_;
    // A program that waits only to be told that it has what it asked for.
    struct Held {
        xcb_selection_request_event_t request;
        xcb_atom_t property; // where it is; None when it could not be delivered
    };
    struct Hold {
        xcb_window_t window;
        std::function<void()> arrived;
        Clock::time_point end;
        std::vector<Held> requests = {}; // oldest first
        bool refuses = false;
    };
    std::optional<Hold> hold_;
};

} // namespace platform::selection
