#pragma once

// How the window looks beyond the user's theme: a flat bar that belongs to the content.
namespace platform {

inline constexpr const char* barClass = "quillmark-bar";
inline constexpr const char* flatBarClass = "quillmark-flat-bar";

// Once per process, when the toolkit is ready.
void installWindowLook();

} // namespace platform
