#pragma once

#include "platform/accessibility.h"
#include "platform/linux/at_spi/focus.h"
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
    // An object on the accessibility bus. Only which one it is decides about equality.
    struct Accessible {
        at_spi::FocusedObject seen; // as it was when it was looked at last
        std::chrono::steady_clock::time_point seenAt{};
        bool operator==(const Accessible& other) const { return seen.object == other.seen.object; }
    };
    using What = std::variant<SystemWide, Application, BareWindow, Accessible>;

    explicit AXUIElement(What it) : what(std::move(it)) {}

    // Mutable: what is known of an object is renewed when it is asked.
    mutable What what;
};

namespace ax {

// For all the questions of one query together: a program that answers each of many slowly costs no more.
inline constexpr at_spi::Milliseconds wholeQuery{500};

AXUIElementRef reference(AXUIElement::What what);
AXUIElementRef reference(at_spi::FocusedObject seen);

// The focused element of a process; null when it shows none. A process that is not on the accessibility bus,
// or shows nothing there although it was asked to, has its focused window for an element.
AXUIElementRef focusedElement(pid_t process);
AXUIElementRef focusedWindow(pid_t process);

// Asks the process to show its elements.
bool askToShow(pid_t process);

// Whatever has the focus anywhere on the desktop; never anything of the host itself.
AXUIElementRef systemWideFocusedElement();

// An attribute of an object on the bus. Nothing of a password field is read but its role and states.
std::optional<AXAttributeValue> attribute(AXUIElement::Accessible& accessible, std::string_view name);

} // namespace ax
} // namespace platform
