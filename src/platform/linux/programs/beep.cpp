#include "platform/linux/programs/theme_sound.h"
#include "platform/linux/x11/keyboard/bell.h"
#include "platform/linux/x11/windows/highlight.h"
#include "platform/main_queue.h"
#include "platform/workspace.h"

#include <memory>

namespace platform {
namespace {

constexpr Seconds highlighted{0.15};

} // namespace

// Most desktops keep the X server's bell silent, and many persons their speakers: without something to see,
// the hot key would seem dead.
void beep() {
    playThemeSound("bell", [] { x11::ringBell(); });
    MainQueue::asyncAfter(highlighted, [highlight = std::make_shared<x11::Highlight>()] {});
}

} // namespace platform
