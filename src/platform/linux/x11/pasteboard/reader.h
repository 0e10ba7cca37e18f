#pragma once

#include "platform/linux/x11/pasteboard/contents.h"
#include "platform/linux/x11/pasteboard/xcb_connection.h"

#include <functional>
#include <list>

namespace platform::selection {

// Counts the owners that CLIPBOARD has had, from 1. Owners of other selections are all number 0.
using OwnerNumber = std::uint64_t;

// What one owner is asked for, as of a time at which it owned the selection.
struct Request {
    xcb_atom_t selection;
    xcb_atom_t target;
    OwnerNumber owner;
    xcb_timestamp_t time;
};

// How long an owner may answer nothing at all, and how long the whole answer may take.
struct AnswerLimits {
    std::chrono::milliseconds silence;
    std::chrono::milliseconds total;
};

// Takes what an owner delivered; absent when it refused or was too late.
using Done = std::function<void(std::optional<Property> value)>;

// What an owner delivered for a target, with the names of the atoms in it.
Representation representation(XcbConnection& connection, const PasteboardType& target, Property value);

// Asks the owners of selections for what they offer, any number of requests at once. On the connection's
// thread.
//
// A request that has missed a limit stays open. What is delivered late is kept for a moment, for whoever asks
// for it again. An owner that has answered nothing since a request of its own was missed is silent.
//
// Each request has a window of its own as long as it is open, so that its answer cannot be taken for
// another's. GTK 3 needs that too: of several answers that it delivers to one window in pieces it forgets all
// but one.
class Reader {
public:
    explicit Reader(XcbConnection& connection);

    // `done` is called once, perhaps before this returns, and never when the reader ends first.
    void ask(const Request& request, AnswerLimits limits, Done done);

    // Asks a silent owner and waits for as long as the owner exists.
    void askWithoutLimit(const Request& request, Done done);

    bool isSilent(OwnerNumber owner) const;

    // That owner has ended; it will deliver nothing more.
    void ownerGone(OwnerNumber owner);

    void notified(const xcb_selection_notify_event_t& notice);
    void propertyArrived(xcb_window_t window, xcb_atom_t property);

    // Ends what has passed its limits. Call it again at `deadline`.
    void expire(Clock::time_point now);
    std::optional<Clock::time_point> deadline() const;

private:
    enum class State {
        awaited,  // `done` is called when the answer comes or a limit has passed
        late,     // a limit has passed, or there is none
        kept,     // the answer came late, and nobody has asked for it again yet
        abandoned // the answer comes in pieces, too many or too late; no further one is taken
    };
    struct Conversion {
        Request request;
        xcb_window_t window;
        Done done;
        State state = State::late;
        std::chrono::milliseconds silence{};
        Clock::time_point silentUntil{};
        Clock::time_point end{};
        Clock::time_point asked = Clock::now();
        bool answeredOthers = false; // its owner has answered another request since
        bool inPieces = false;
        std::size_t announced = 0;       // the size that the pieces will have at least, as the owner says
        std::optional<Property> value{}; // as much of it as has come

        Clock::time_point limit() const; // when something has to happen; max: never
        std::size_t size() const;        // in bytes
        void add(const Property& piece);
    };
    using Conversions = std::list<Conversion>;

    Conversion& start(const Request& request, Done done);
    Conversions::iterator find(const Request& request);
    xcb_window_t freeWindow();
    void answered(OwnerNumber owner);
    void finish(Conversions::iterator conversion, std::optional<Property> value);
    void giveUp(Conversion& conversion, State state);
    void traceOutcome(const Conversion& conversion, const std::string& outcome);
    std::size_t bytesUnderWay() const;

    XcbConnection& connection_;
    xcb_atom_t property_; // in which answers are delivered
    std::vector<xcb_window_t> windows_;
    Conversions conversions_;
};

} // namespace platform::selection
