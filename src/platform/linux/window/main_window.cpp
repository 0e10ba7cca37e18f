#include "platform/linux/window/main_window.h"

namespace platform {
namespace {

std::weak_ptr<Window> theWindow;

} // namespace

void setMainWindow(const std::shared_ptr<Window>& window) { theWindow = window; }

std::shared_ptr<Window> mainWindow() { return theWindow.lock(); }

} // namespace platform
