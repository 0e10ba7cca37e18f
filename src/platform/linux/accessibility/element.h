#pragma once

#include "platform/accessibility.h"
#include "platform/linux/at_spi/focused_object.h"
#include "platform/linux/at_spi/text.h"
#include "platform/linux/x11/windows/properties.h"

#include <chrono>
#include <variant>

namespace platform {

// One of four things. Main thread only.
class AXUIElement {
public:
    struct SystemWide {
        bool operator==(const SystemWide&) const = default;
    };
    struct Application {
        pid_t process;
        bool operator==(const Application&) const = default;
    };
    // A window of a program that shows no elements.
    struct BareWindow {
        x11::WindowId window;
        pid_t process;
        bool operator==(const BareWindow&) const = default;
    };
    // An object on the accessibility bus. Two are equal when the object is.
    struct Accessible {
        using Time = std::chrono::steady_clock::time_point;
        at_spi::FocusedObject seen; // as it was when it was read last
        Time seenAt{};
        at_spi::TextReading text;
        Time textAt{};
        std::optional<std::optional<std::string>> selected; // in `text`; absent until it was asked for
        std::shared_ptr<at_spi::PendingReply> title;        // asked for ahead, of a window; may be null
        Time titleAskedAt{};
        bool operator==(const Accessible& other) const { return seen.object == other.seen.object; }
    };
    using What = std::variant<SystemWide, Application, BareWindow, Accessible>;

    explicit AXUIElement(What it) : what(std::move(it)) {}

    // Mutable: reading an attribute also renews what is remembered of the object.
    mutable What what;
};

namespace ax {

// For all calls of one query together, so that a program that replies slowly to each does not hold up the
// host.
inline constexpr at_spi::Milliseconds queryDeadline{500};

AXUIElementRef reference(AXUIElement::What what);
AXUIElementRef reference(at_spi::FocusedObject seen);

} // namespace ax
} // namespace platform
