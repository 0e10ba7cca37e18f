#include "platform/linux/accessibility/trust.h"

#include "platform/accessibility.h"
#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/never_destroyed.h"

#include <utility>

namespace platform {
namespace {

using Tell = std::function<void(const std::string&)>;

// Empty when the person need not be told, or has been.
Tell& tellPerson() {
    static NeverDestroyed<Tell> tell;
    return *tell;
}

std::string whatToDo() {
    const std::string& whyNot = at_spi::AccessibilityBus::shared().whyNot();
    return (whyNot.empty() ? "Programs cannot be told to show their text. Log out and in again." : whyNot) +
           " Until then, copy a text before you press the hot key.";
}

} // namespace

void startAccessibility(Tell tell) {
    tellPerson() = std::move(tell);
    auto& accessibility = at_spi::AccessibilityBus::shared();
    accessibility.keepListening();
    if (!accessibility.enable()) printMessage("other programs' text cannot be read. " + whatToDo());
}

bool AXIsProcessTrustedWithOptions(AXTrustedCheckOptions options) {
    auto& accessibility = at_spi::AccessibilityBus::shared();
    if (accessibility.isEnabled()) return true;
    if (!options.kAXTrustedCheckOptionPrompt) return false;
    if (accessibility.enable()) return true;
    if (const auto tell = std::exchange(tellPerson(), nullptr)) tell(whatToDo());
    return false;
}

} // namespace platform
