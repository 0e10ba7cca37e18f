#include "platform/window.h"

#include "platform/linux/interface/view_controller.h"
#include "platform/linux/window/look.h"
#include "platform/linux/window/native_window.h"
#include "platform/linux/window/screen.h"
#include "platform/linux/window/screen_coordinates.h"

#include <string>

namespace platform {

// This desktop buffers every window itself, and makes it at once.
Window::Window(Rect contentRect, std::uint64_t styleMask, BackingStoreType, bool)
    : native_(std::make_unique<Native>(styleMask)) {
    setContentSize({contentRect.width, contentRect.height});
}

Window::~Window() = default;

void Window::awakeFromNib() {}

void Window::setContentViewController(std::unique_ptr<flutter::ViewController> controller) {
    native_->controller = std::move(controller);
    if (native_->controller) native_->controller->native().setView(native_->view.embeddingWindow());
}

flutter::ViewController* Window::contentViewController() const { return native_->controller.get(); }

void Window::setContentSize(Size size) { native_->setContentSize(size); }

void Window::setMinSize(Size size) { native_->setMinSize(size); }

// GTK keeps the header bar's title and the window's, which the window manager's lists show, the same.
void Window::setTitle(std::string_view title) { native_->header.set_title(std::string(title)); }

std::string Window::title() const { return native_->header.get_title(); }

void Window::setTitleVisibility(WindowTitleVisibility visibility) {
    native_->setTitleVisible(visibility == WindowTitleVisibility::visible);
}

void Window::setTitlebarAppearsTransparent(bool transparent) {
    const auto style = native_->header.get_style_context();
    transparent ? style->add_class(flatBarClass) : style->remove_class(flatBarClass);
}

void Window::setStyleMask(std::uint64_t styleMask) { native_->setStyleMask(styleMask); }

std::uint64_t Window::styleMask() const { return native_->styleMask(); }

void Window::setMovableByWindowBackground(bool movable) { native_->movableByBackground = movable; }

void Window::center() {
    const auto screen = Screen::mainScreen();
    if (!screen) return;
    const Rect area = screen->visibleFrame();
    Rect frame = native_->frame();
    frame.x = area.x + (area.width - frame.width) / 2;
    frame.y = area.y + (area.height - frame.height) / 2;
    native_->setFrame(fitted(frame, area));
}

void Window::setFrameAutosaveName(std::string_view name) { native_->keepFrameAs(name); }

// X11 window managers keep a window above a full-screen one when it is shown later: nothing to ask for.
void Window::setCollectionBehavior(std::uint64_t behavior) {
    native_->movesToActiveSpace = (behavior & WindowCollectionBehaviorMoveToActiveSpace) != 0;
}

// Closing only hides: whoever owns the window releases it.
void Window::setReleasedWhenClosed(bool) {}

void Window::setDelegate(WindowDelegate* delegate) { native_->delegate = delegate; }

void Window::miniaturize() { native_->window.iconify(); }

void Window::deminiaturize() { native_->window.deiconify(); }

void Window::makeKeyAndOrderFront() { native_->present(); }

void Window::orderOut() { native_->orderOut(); }

void Window::setLevel(std::int64_t level) { native_->window.set_keep_above(level >= FloatingWindowLevel); }

bool Window::isZoomed() const { return native_->isZoomed(); }

Rect Window::frame() const { return native_->frame(); }

void Window::setFrame(Rect frame, bool) { native_->setFrame(frame); }

std::optional<Screen> Window::screen() const {
    if (!native_->isVisible()) return std::nullopt;
    return screenNearest(native_->frame());
}

Window::Native& Window::native() const { return *native_; }

} // namespace platform
