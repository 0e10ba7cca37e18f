#pragma once

#include "platform/linux/x11/pasteboard/connection.h"
#include "platform/linux/x11/pasteboard/contents.h"

#include <functional>
#include <list>

namespace platform::selection {

// How long an owner may stay silent, and how long the whole answer may take.
struct Patience {
    std::chrono::milliseconds silence;
    std::chrono::milliseconds total;
};

// What an owner delivered; absent when it refused or stayed silent.
using Answer = std::optional<Property>;
using Done = std::function<void(Answer)>;

// Asks the owners of selections, any number of questions at once. On the connection's thread. An owner that
// misses its deadline still owes the answer: the question stays open, what comes late is thrown away, and
// until then the owner counts as not answering.
class Reader {
public:
    explicit Reader(Connection& connection);

    // A question to one owner: which of all the selection's owners so far it is for, and since when that one
    // owns.
    struct Question {
        xcb_atom_t selection;
        xcb_atom_t target;
        std::uint64_t owner;
        xcb_timestamp_t time;
    };

    // `done` is called once, unless the reader ends first.
    void ask(const Question& question, Patience patience, Done done);

    // A question to an owner that is not answering, kept open without a deadline for the day it wakes up.
    void leave(const Question& question, Done done);

    // True while that owner has not given an answer in time and not since.
    bool owes(std::uint64_t owner) const;

    // That owner has died: nothing will come from it any more.
    void ownerGone(std::uint64_t owner);

    void notified(const xcb_selection_notify_event_t& notice);
    void propertyArrived(xcb_atom_t property);

    void expire(Clock::time_point now);
    std::optional<Clock::time_point> deadline() const;

private:
    struct Conversion {
        Question question;
        xcb_atom_t property;
        std::chrono::milliseconds silence;
        Clock::time_point silentUntil;
        Clock::time_point end;
        Done done;
        bool late = false;
        bool pieces = false;
        Property value;
    };
    using Conversions = std::list<Conversion>;

    Conversion& start(const Question& question, Done done);
    xcb_atom_t freshProperty();
    void finish(Conversions::iterator conversion, Answer answer);
    void miss(Conversion& conversion);

    Connection& connection_;
    std::vector<xcb_atom_t> properties_;
    std::size_t nextProperty_ = 0;
    Conversions conversions_;
};

} // namespace platform::selection
