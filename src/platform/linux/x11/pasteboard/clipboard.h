#pragma once

#include "platform/linux/x11/pasteboard/owner.h"
#include "platform/linux/x11/pasteboard/reader.h"
#include "platform/linux/x11/pasteboard/rescue.h"

namespace platform::selection {

// The pasteboard as the host sees it at one moment.
struct View {
    std::int64_t changeCount = 0;
    // What the host itself put there; null when it is not the host's.
    SharedContents own;
    // True when another program's contents can be asked for.
    bool foreign = false;
};

// CLIPBOARD on the pasteboard's own connection: who has it, how often it changed, what the host offers and
// asks. On one thread only; `process` must run when the connection has something to read and when `deadline`
// has come.
//
// Clearing while the owner does not answer: taking the selection then would destroy for good what nobody has
// been able to read. So the selection stays with its owner and only the host finds it empty, until somebody
// copies or a moment has passed. When somebody does copy, the owner's late answers are put back if the host
// then leaves the pasteboard empty.
class Clipboard {
public:
    // Null when there is no X server that can say who owns a selection.
    static std::unique_ptr<Clipboard> open();

    int descriptor() const { return connection_->descriptor(); }
    bool lost() const { return connection_->lost(); }

    // Handles all that has arrived or fallen due.
    void process();
    std::optional<Clock::time_point> deadline() const;

    // The server's state now, everything that has happened there included.
    View look();

    // Asks another program for its contents as they were at that change; `done` gets absent when they have
    // changed since, or their owner does not answer.
    void ask(const PasteboardType& target, std::int64_t changeCount, Patience patience, Done done);

    void clear();
    bool write(const SharedContents& contents);

    // Gives the host's contents to the clipboard manager, if there is one; calls `done` when that is over.
    void handOver(std::chrono::milliseconds patience, std::function<void()> done);

    // The name of an atom, and those of the atoms in a property.
    std::string name(xcb_atom_t atom) { return connection_->names({&atom, 1}).front(); }
    std::vector<std::string> names(const Property& atoms);

private:
    explicit Clipboard(std::unique_ptr<Connection> connection);
    void handleArrived();
    void handle(const xcb_generic_event_t& event);
    void changedHands(xcb_window_t owner, xcb_timestamp_t time, xcb_timestamp_t now);
    bool claim(const SharedContents& contents);
    void settle(Clock::time_point now);
    bool settled(Clock::time_point now) const;
    bool emptied() const { return owner_.contents() && owner_.contents()->empty; }
    bool foreign() const { return holder_ != XCB_NONE && !owner_.contents(); }
    Reader::Question question(xcb_atom_t target) const;

    std::unique_ptr<Connection> connection_;
    Owner owner_;
    Reader reader_;
    Rescue rescue_;
    xcb_window_t holder_ = XCB_NONE;
    xcb_timestamp_t heldSince_ = XCB_CURRENT_TIME;
    std::uint64_t handovers_ = 0;
    std::int64_t changeCount_ = 0;
    bool hidden_ = false;
    Clock::time_point clearedAt_{};
};

} // namespace platform::selection
