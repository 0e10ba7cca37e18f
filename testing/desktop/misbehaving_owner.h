// A program that owns the clipboard and serves it badly, on a thread of the test's own.
#pragma once

#include "testing/desktop/pasteboard_programs.h"
#include "testing/desktop/wait.h"

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace pasteboard_test {

struct Faults {
    testbed::milliseconds delay{};   // before each answer, one after the other
    std::set<std::string> refused{}; // targets answered with nothing; "TARGETS" may be one
    std::set<std::string> ignored{}; // never answered
    std::set<std::string> endless{}; // delivered in pieces that never end
};

class MisbehavingOwner {
public:
    // Owns the selection, once constructed, until it goes.
    MisbehavingOwner(std::vector<Representation> contents, Faults faults,
                     const std::string& selection = "CLIPBOARD");
    ~MisbehavingOwner();
    MisbehavingOwner(const MisbehavingOwner&) = delete;
    MisbehavingOwner& operator=(const MisbehavingOwner&) = delete;

    xcb_window_t window() const { return client_.window(); }

    // How many bytes of endless answers have been taken.
    std::size_t taken() const { return taken_; }

private:
    void run(const std::stop_token& stop);
    void handle(const xcb_generic_event_t& event);
    void answer(const xcb_selection_request_event_t& request);
    std::string name(xcb_atom_t atom);

    std::vector<Representation> contents_;
    Faults faults_;
    RawClient client_;
    std::set<xcb_atom_t> endlessProperties_;
    std::atomic<std::size_t> taken_ = 0;
    std::jthread thread_;
};

} // namespace pasteboard_test
