#pragma once

// What the host sets for its own process and the programs it starts must not inherit.
namespace platform {

// Raises the limit of open files as far as the system lets this user: each generation of a model server has a
// connection of its own. Once, when the host starts.
void raiseOpenFileLimit();

// In a child process between fork and exec: gives it the limit of open files that the host was started with,
// and the usual reaction to SIGPIPE. Async-signal-safe.
void undoHostSettings();

} // namespace platform
