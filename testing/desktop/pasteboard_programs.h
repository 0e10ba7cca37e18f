// Other programs on the pasteboard: real GTK ones, and a raw X client that can misbehave.
#pragma once

#include "testing/desktop/process.h"

#include <xcb/xcb.h>

#include <optional>
#include <string>
#include <vector>

namespace pasteboard_test {

struct Representation {
    std::string target;
    std::string type;
    int format = 8;
    std::string bytes;

    bool operator==(const Representation&) const = default;
};

// A GTK program that owns the clipboard, once constructed.
struct Owner {
    explicit Owner(const std::vector<Representation>& contents);

    testbed::Process program;
};

// A GTK program that reads that target; what it prints once it has ended, absent when there is nothing.
struct Reader {
    explicit Reader(const std::string& target);
    std::optional<std::string> finish();

    testbed::Process program;
};

// What another program is given for that target.
std::optional<Representation> given(const std::string& target);

// A client of the X server that does only what it is told, where a toolkit would do the right thing by
// itself.
class RawClient {
public:
    RawClient();
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    xcb_atom_t atom(const std::string& name);
    xcb_window_t owner();
    void own(const std::string& selection);
    // Converts and waits for the notice; the property it was answered in, or none.
    xcb_atom_t convert(const std::string& selection, const std::string& target);
    void set(xcb_window_t window, xcb_atom_t property, const std::string& type, std::uint8_t format,
             const std::string& bytes);
    std::string bytes(xcb_atom_t property);
    // The next request for what it owns.
    xcb_selection_request_event_t nextRequest();
    void notify(const xcb_selection_request_event_t& request, bool done);
    // Waits until somebody has deleted the property.
    void waitDeleted(xcb_atom_t property);
    xcb_window_t window() const { return window_; }
    xcb_connection_t* xcb() const { return connection_; }

private:
    // Waits for an event of that type for which `matches` holds.
    template <class Event, class Matches>
    Event next(std::uint8_t type, Matches matches);

    xcb_connection_t* connection_;
    xcb_window_t window_;
};

} // namespace pasteboard_test
