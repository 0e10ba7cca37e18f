#pragma once

#include "platform/event.h"

// The modifier keys of this moment. Main thread only.
namespace platform::x11 {

// The flags of the modifiers that some keyboard has down, and of Caps Lock when it is on. True also of keys
// that the user holds after a synthetic release of them, which no program sees any more.
CGEventFlags heldModifiers();

} // namespace platform::x11
