#include "platform/linux/accessibility/element.h"

#include "platform/linux/accessibility/attributes.h"
#include "platform/linux/accessibility/focus_queries.h"
#include "platform/linux/base/own_processes.h"
#include "platform/linux/x11/windows/front_window.h"

namespace platform {
namespace ax {

AXUIElementRef reference(AXUIElement::What what) {
    return AXUIElementRef(std::make_shared<const AXUIElement>(std::move(what)));
}

AXUIElementRef reference(at_spi::FocusedObject seen) {
    return reference(
        AXUIElement::Accessible{std::move(seen), std::chrono::steady_clock::now(), {}, {}, {}, nullptr, {}});
}

} // namespace ax

namespace {

std::optional<AXAttributeValue> found(AXUIElementRef element) {
    return element ? std::optional<AXAttributeValue>(std::move(element)) : std::nullopt;
}

// The title that the window manager shows. The focused window may lie inside the one that has it, and have a
// name of its own ("FocusProxy" in Java 17).
std::optional<std::string> titleOf(const AXUIElement::BareWindow& bare) {
    const x11::WindowId active = x11::activeWindow();
    return x11::windowTitle(x11::windowProcess(active) == bare.process ? active : bare.window);
}

// Qt 5 leaves the program's name out of the name that it gives a window: "letter.txt" for "letter.txt —
// Kate".
std::optional<AXAttributeValue> titleOf(AXUIElement::Accessible& accessible) {
    auto name = ax::attribute(accessible, "AXTitle");
    const auto* text = name ? std::get_if<std::string>(&*name) : nullptr;
    if (text == nullptr || text->empty()) return name;
    const x11::WindowId active = x11::activeWindow();
    const auto owner = x11::windowProcess(active);
    const auto shown = owner && !isOwnProcess(*owner) ? x11::windowTitle(active) : std::nullopt;
    return shown && shown->starts_with(*text) ? shown : name;
}

// Reads one attribute of each kind of element.
struct Reader {
    std::string_view name;

    std::optional<AXAttributeValue> operator()(AXUIElement::SystemWide) const {
        return name == "AXFocusedUIElement" ? found(ax::systemWideFocusedElement()) : std::nullopt;
    }
    std::optional<AXAttributeValue> operator()(AXUIElement::Application application) const {
        if (name == "AXFocusedUIElement") return found(ax::focusedElement(application.process));
        if (name == "AXFocusedWindow") return found(ax::focusedWindow(application.process));
        return std::nullopt;
    }
    std::optional<AXAttributeValue> operator()(const AXUIElement::BareWindow& bare) const {
        return name == "AXTitle" ? titleOf(bare) : std::nullopt;
    }
    std::optional<AXAttributeValue> operator()(AXUIElement::Accessible& accessible) const {
        return name == "AXTitle" ? titleOf(accessible) : ax::attribute(accessible, name);
    }
};

} // namespace

bool CFEqual(const AXUIElementRef& left, const AXUIElementRef& right) {
    if (!left || !right) return false;
    return left.get() == right.get() || left.get()->what == right.get()->what;
}

std::optional<CFRange> AXValueGetValue(const AXValue& value, AXValueType type) {
    if (type != AXValueType::cfRange || value.type != type) return std::nullopt;
    return value.range;
}

AXUIElementRef AXUIElementCreateApplication(pid_t pid) {
    return ax::reference(AXUIElement::Application{pid});
}

AXUIElementRef AXUIElementCreateSystemWide() { return ax::reference(AXUIElement::SystemWide{}); }

std::optional<AXAttributeValue> AXUIElementCopyAttributeValue(const AXUIElementRef& element,
                                                              std::string_view attribute) {
    if (!element) return std::nullopt;
    return std::visit(Reader{attribute}, element.get()->what);
}

bool AXUIElementSetAttributeValue(const AXUIElementRef& element, std::string_view attribute, bool value) {
    if (!element || !value) return false;
    if (attribute != "AXManualAccessibility" && attribute != "AXEnhancedUserInterface") return false;
    const auto* application = std::get_if<AXUIElement::Application>(&element.get()->what);
    return application != nullptr && ax::askToShow(application->process);
}

} // namespace platform
