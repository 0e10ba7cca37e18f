#pragma once

#include "platform/linux/accessibility/element.h"

#include <optional>
#include <string_view>

namespace platform::ax {

// An attribute of an object on the accessibility bus; absent when it cannot be read. Nothing is read from a
// password field but its role and states. Main thread only.
std::optional<AXAttributeValue> attribute(AXUIElement::Accessible& accessible, std::string_view name);

} // namespace platform::ax
