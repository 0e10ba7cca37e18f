#pragma once

// Xlib's own; its header leaves macros behind that the toolkit's headers do not bear.
using Display = struct _XDisplay;

// X errors, told apart by connection. Xlib has one error handler for the whole program, and both its own
// default and the toolkit's end the program. Any thread.
namespace platform::x11 {

// From now on the errors of this connection are remembered instead of ending the program; those of every
// other connection go on to whoever handled errors before. Call it again when the toolkit may have taken the
// handler back: it costs nothing when nothing has changed.
void keepErrors(Display* display);

// From now on, a display that goes (at the end of the session, for instance) ends the program with one line
// that says so, after the end hooks. `keepErrors` does this too.
void endCleanlyWhenDisplayIsLost();

// True when a request of this connection with this serial number (`XNextRequest`) or a later one has failed.
// Only replies that have arrived count: `XSync` first.
bool failedSince(Display* display, unsigned long serial);

} // namespace platform::x11
