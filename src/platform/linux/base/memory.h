#pragma once

namespace platform {

// Prepares the host's memory for the texts that pass through it. Once, when the host starts.
//
// Large blocks go back to the system as soon as they are freed. No core file is written, and only root may
// attach a debugger to the running host or read its memory and its entries in /proc that show memory or open
// files; the host itself may. A debugger that started the host stays attached. A build with assertions
// (without NDEBUG) allows both.
//
// Also, in every program that this is linked into: what C++ code frees is overwritten first, so that no copy
// of a text, which may be a password, can be forgotten. It takes 5 ns for a short text. What GLib, GTK and
// the X libraries allocate by themselves is not overwritten.
void prepareMemory();

} // namespace platform
