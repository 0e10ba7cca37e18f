#pragma once

#include <functional>

namespace platform {

// Plays a sound of the desktop's sound theme, by its name in freedesktop.org's Sound Naming Specification,
// through PulseAudio or PipeWire. `otherwise` is called once where it cannot be played or the person's
// settings want no sounds: now, or later from the main loop. Main thread only; does not wait for the sound
// server.
void playThemeSound(const char* name, std::function<void()> otherwise);

} // namespace platform
