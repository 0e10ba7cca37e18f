#include "platform/window.h"

#include "platform/linux/interface/view_controller.h"
#include "platform/linux/window/native_window.h"
#include "platform/linux/window/screen.h"

#include <string>

namespace platform {

// GTK buffers every window itself. This one is made at once, which `defer` leaves open.
Window::Window(Rect contentRect, std::uint64_t styleMask, BackingStoreType, bool)
    : native_(std::make_unique<Native>(styleMask)) {
    setContentSize({contentRect.width, contentRect.height});
}

Window::~Window() = default;

void Window::awakeFromNib() {}

void Window::setContentViewController(std::unique_ptr<flutter::ViewController> controller) {
    native_->controller = std::move(controller);
    if (native_->controller) native_->controller->native().start(native_->view.embeddingWindow());
}

flutter::ViewController* Window::contentViewController() const { return native_->controller.get(); }

void Window::setContentSize(Size size) { native_->frame.setContentSize(size); }

void Window::setMinSize(Size size) { native_->frame.setMinSize(size); }

// GTK keeps the header bar's title and the window's, which the window manager's lists show, the same.
void Window::setTitle(std::string_view title) { native_->header.set_title(std::string(title)); }

std::string Window::title() const { return native_->header.get_title(); }

void Window::setTitleVisibility(WindowTitleVisibility visibility) {
    native_->setTitleVisible(visibility == WindowTitleVisibility::visible);
}

void Window::setTitlebarAppearsTransparent(bool transparent) { native_->setBarFlat(transparent); }

void Window::setStyleMask(std::uint64_t styleMask) { native_->setStyleMask(styleMask); }

std::uint64_t Window::styleMask() const { return native_->styleMask(); }

void Window::setMovableByWindowBackground(bool movable) { native_->movableByBackground = movable; }

void Window::center() {
    const auto screen = Screen::mainScreen();
    if (!screen) return;
    const Rect area = screen->visibleFrame();
    Rect frame = native_->frame.current();
    frame.x = area.x + (area.width - frame.width) / 2;
    frame.y = area.y + (area.height - frame.height) / 2;
    native_->frame.set(fitted(frame, area));
}

void Window::setFrameAutosaveName(std::string_view name) { native_->frame.keepAs(name); }

// X11 window managers show a window above a full-screen one when it is presented later, so the bit for that
// asks for nothing.
void Window::setCollectionBehavior(std::uint64_t behavior) {
    native_->presence.movesToActiveSpace = (behavior & WindowCollectionBehaviorMoveToActiveSpace) != 0;
}

// Closing only hides: whoever owns the window releases it.
void Window::setReleasedWhenClosed(bool) {}

void Window::setDelegate(WindowDelegate* delegate) { native_->delegate = delegate; }

void Window::miniaturize() { native_->presence.minimise(); }

void Window::deminiaturize() {
    if (native_->isVisible()) native_->presence.show();
}

void Window::makeKeyAndOrderFront() { native_->presence.show(); }

void Window::orderOut() { native_->presence.takeAway(); }

void Window::setLevel(std::int64_t level) { native_->window.set_keep_above(level >= FloatingWindowLevel); }

bool Window::isZoomed() const { return native_->isZoomed(); }

Rect Window::frame() const { return native_->frame.current(); }

void Window::setFrame(Rect frame, bool) { native_->frame.set(frame); }

std::optional<Screen> Window::screen() const {
    if (!native_->isVisible()) return std::nullopt;
    return screenNearest(native_->frame.current());
}

Window::Native& Window::native() const { return *native_; }

} // namespace platform
