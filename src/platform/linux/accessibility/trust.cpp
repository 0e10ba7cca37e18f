#include "platform/linux/accessibility/trust.h"

#include "platform/accessibility.h"
#include "platform/linux/at_spi/session.h"

namespace platform {

bool startAccessibility(std::string& whyNot) {
    auto& session = at_spi::Session::shared();
    session.keepListening();
    if (!session.enable()) {
        whyNot = session.whyNot().empty()
                     ? "Other programs cannot be told to show their text: log out and in again."
                     : session.whyNot();
        return false;
    }
    return true;
}

bool AXIsProcessTrustedWithOptions(AXTrustedCheckOptions options) {
    auto& session = at_spi::Session::shared();
    return session.isEnabled() || (options.kAXTrustedCheckOptionPrompt && session.enable());
}

} // namespace platform
