#pragma once

#include "platform/menu.h"

// What the standard actions of menu items do on this desktop. Main thread only.
namespace platform {

// Whether the action has something to act on now.
bool canPerform(Selector action);

// Performs the action in the next turn of the main loop, if it has something to act on then.
void performSoon(Selector action);

// True for the Edit actions: each is performed by typing its key into the view that has the keyboard.
bool isTyped(Selector action);

} // namespace platform
