#pragma once

// Declared as in <X11/Xlib.h>, whose macros clash with the toolkit's headers.
using Display = struct _XDisplay;

// Errors that the X server reports, by connection. Xlib has one error handler for the whole program; its own
// and the toolkit's end the program. Any thread.
namespace platform::x11 {

// From now on an error of this connection is remembered and does not end the program; those of every other
// connection go to the handler there was before. Call it again when the toolkit may have put its own handler
// in place since.
void keepErrors(Display* display);

// From now on a lost connection to the X server (when the session ends, for instance) runs the end hooks and
// ends the program with one line on standard error. `keepErrors` does this too.
void endCleanlyWhenDisplayIsLost();

// True when a request of this connection with this serial number (`XNextRequest`) or a later one has failed.
// Call `XSync` first: an error counts once it has arrived.
bool failedSince(Display* display, unsigned long serial);

} // namespace platform::x11
