#pragma once

#include "platform/linux/x11/pasteboard/late_contents.h"
#include "platform/linux/x11/pasteboard/owner.h"
#include "platform/linux/x11/pasteboard/primary.h"
#include "platform/linux/x11/pasteboard/reader.h"

namespace platform::selection {

// The pasteboard as the host sees it at one moment.
struct View {
    std::int64_t changeCount = 0;
    // What the host itself put there; null when it is not the host's.
    SharedContents own;
    // True when another program's contents can be asked for.
    bool foreign = false;
};

// CLIPBOARD on the pasteboard's own connection: who owns it, how often it changed, what the host offers and
// asks for. On one thread only; `process` must run when the connection has something to read and at
// `deadline`.
//
// Its state is one of these. A silent owner is one that does not answer (Reader::isSilent).
//
//   state    owner            the host finds   other programs find
//   nobody   none             nothing          nothing
//   theirs   another program  its contents     its contents
//   hidden   a silent one     nothing          its contents
//   ours     the host         its own          the host's
//   cleared  the host         nothing          an owner without data
//
//   in state            clear()   write()   a program copies   its owner ends   no clear() for 1.5 s
//   nobody              cleared   ours      theirs
//   theirs              cleared   ours      theirs             nobody
//   theirs, silent (1)  hidden    ours      theirs             nobody
//   hidden              hidden    ours      theirs             nobody           theirs
//   ours                cleared   ours      theirs
//   cleared             cleared   ours      theirs                              ours, if late contents came
//   (2)
//
// To take CLIPBOARD from a silent owner would destroy what nobody could read. In state hidden only the host
// finds it empty, and the owner is asked for all it may have, for the case that another program's copy
// replaces it. Those are the late contents. write() drops them, and so does a copy later than 1.5 s after
// clear(), which is the user's own. (1) Unless it became the owner after late contents were asked for: then
// it has only the copy that the host caused, and state cleared follows. (2) The host offers them, as its own.
class Clipboard {
public:
    // Null when there is no X server that can say who owns a selection.
    static std::unique_ptr<Clipboard> open();

    XcbConnection& connection() { return *connection_; }
    Owner& owner() { return owner_; }

    // Handles all that has arrived or fallen due.
    void process();
    std::optional<Clock::time_point> deadline() const;

    // Takes in everything that has happened at the server so far.
    View view();

    // Asks another program for one target of what it offered at that change. `done` gets nothing when the
    // pasteboard has changed since, when the owner refuses, and when it is silent.
    void ask(const PasteboardType& target, std::int64_t changeCount, AnswerLimits limits, Done done);

    // Asks it for the names of what it offers, in its order; the common ones when it does not say. Absent
    // when it is silent.
    using Targets = std::optional<std::vector<PasteboardType>>;
    void askTargets(std::int64_t changeCount, AnswerLimits limits, std::function<void(Targets)> done);

    void clear();
    // False when other programs kept taking the selection.
    bool write(const SharedContents& contents);

    // Offers the text of the PRIMARY selection as the host's contents, if it belongs to the program of
    // `window`; calls `done` in either case. What replaces a copy by that program keeps the late contents, as
    // such a copy would.
    void copyPrimary(xcb_window_t window, AnswerLimits limits, std::function<void()> done);

    // The PRIMARY selection itself; absent when it does not belong to that program, or is told too late.
    void readPrimary(xcb_window_t window, AnswerLimits limits,
                     std::function<void(std::optional<PrimarySelection>)> done);

    // Gives what the host offers to the clipboard manager, if there is one, and calls `done` when it has it.
    void saveToManager(std::chrono::milliseconds limit, std::function<void()> done);

private:
    enum class State { nobody, theirs, hidden, ours, cleared };

    explicit Clipboard(std::unique_ptr<XcbConnection> connection);
    State state() const;
    bool holdsOnlyCopy() const;
    void handleArrived();
    void handle(const xcb_generic_event_t& event);
    void ownerChanged(const xcb_generic_event_t& event);
    void propertyChanged(const xcb_generic_event_t& event);
    bool claim(const SharedContents& contents);
    bool isLongCleared(Clock::time_point now) const;
    void endClearing(Clock::time_point now);
    Request request(xcb_atom_t target) const;

    std::unique_ptr<XcbConnection> connection_;
    Owner owner_;
    Reader reader_;
    LateContents late_;
    xcb_window_t ownerWindow_ = XCB_NONE;
    xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
    OwnerNumber ownerNumber_ = 1;
    std::int64_t changeCount_ = 0;
    bool hidden_ = false;
    Clock::time_point clearedAt_{};
};

} // namespace platform::selection
