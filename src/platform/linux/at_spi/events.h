#pragma once

#include "platform/linux/at_spi/object.h"
#include "platform/linux/at_spi/subscription.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::at_spi {

// Something that a program says has happened to one of its objects.
struct Event {
    enum class Kind { focusGained, focusLost, textInserted, textRemoved, caretMoved, selectionChanged };

    Kind kind;
    Object source;
    // Of a changed text the first offset and the number of characters, of caretMoved the new offset, in the
    // program's own units; else 0.
    std::int32_t position = 0;
    std::int32_t length = 0;
    std::string text = {}; // that was inserted; empty where the program does not say
};

// What happens in one program while the object lives: where its focus goes, and what becomes of its texts,
// carets and selections. Main thread only, except what takeLater() returns.
//
// A program tells of text only while somebody asks for it, and begins once it knows: whatever happens after
// the constructor has returned is told. Focus changes are told by those programs that know the session's own
// wish for them (AccessibilityBus::keepListening).
class [[nodiscard]] Events {
public:
    Events(Bus& bus, const std::string& program);
    ~Events();

    // Everything that has happened up to now and has not been taken yet, in the program's order. Makes one
    // call to the program: what it sent before the reply has arrived by then. Absent when it does not reply,
    // or on another bus than the one it listens on.
    std::optional<std::vector<Event>> take(Bus& bus);
    // The same without a call to the program: what it had sent when this was called.
    std::vector<Event> takeSent(Bus& bus);
    // Takes what has arrived when it is called, without asking anybody. For any thread, and also when this
    // object has gone.
    std::function<std::vector<Event>()> takeLater() const;

private:
    struct Heard;

    std::string program_;
    std::shared_ptr<Heard> heard_;
    Subscription subscription_;
};

} // namespace platform::at_spi
