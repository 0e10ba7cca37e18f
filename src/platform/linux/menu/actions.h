#pragma once

#include "platform/menu.h"

#include <gdk/gdk.h>

namespace platform {

// What the standard actions of menu items do here. Main thread only.

// Whether somebody can answer the action now.
bool canPerform(Selector action);

// At the next turn of the main loop, if somebody can answer it then.
void performSoon(Selector action);

// True for what is done by typing the item's key into the view that takes the keys.
bool isTyped(Selector action);

// A key with modifiers as the toolkit has it; key 0 when the item has none.
struct ToolkitKey {
    guint key = 0;
    GdkModifierType modifiers{};
};
ToolkitKey toolkitKey(const MenuItem& item);

} // namespace platform
