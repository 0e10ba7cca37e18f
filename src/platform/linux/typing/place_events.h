#pragma once

#include "platform/linux/at_spi/events.h"
#include "platform/linux/typing/place.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform::typing {

// What has happened in a program, seen from the place that keystrokes are meant for.
struct Happened {
    bool toText = false;            // of the place
    std::optional<CFRange> removed; // from that text, where nothing else has happened to it
    bool toSelection = false;       // of the place, or to its caret
    bool focusElsewhere = false;    // another element has got the focus
    bool anything = false;
};

// What a program says has happened since the object was made. Nothing, where the element is not on the
// accessibility bus. Main thread only.
class PlaceEvents {
public:
    explicit PlaceEvents(const AXUIElementRef& element);

    // What stands in the place: parts of it that are removed and put back have not changed. Empty until then.
    void setText(std::string text) { text_ = std::move(text); }

    // Since the last call, up to now. Absent when the program does not answer.
    std::optional<Happened> sinceLast();
    // The same without a question to the program, which may be waiting for the host: up to anything of which
    // the X server has told the host.
    Happened sinceLastUnasked();
    // Up to when it is called, without any question. For any thread, and also when this object has gone.
    std::function<Happened()> sinceLastByThen() const;

private:
    std::optional<at_spi::Object> here_;
    std::string text_;
    std::unique_ptr<at_spi::Events> events_;
};

} // namespace platform::typing
