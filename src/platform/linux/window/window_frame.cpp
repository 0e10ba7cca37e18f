#include "platform/linux/window/native_window.h"
#include "platform/linux/window/screen.h"
#include "platform/linux/window/screen_coordinates.h"
#include "platform/main_queue.h"

#include <chrono>

// The measures of a window: the toolkit's sizes are without header bar, its positions those of the header
// bar, and both may be those before the last request until the window manager has answered.
namespace platform {
namespace {

using namespace std::chrono_literals;

} // namespace

// Neither maximised nor full screen nor iconified: the frame is the person's own choice.
bool Window::Native::isFree() const {
    constexpr int bound =
        GDK_WINDOW_STATE_MAXIMIZED | GDK_WINDOW_STATE_FULLSCREEN | GDK_WINDOW_STATE_ICONIFIED;
    return (state_ & bound) == 0;
}

int Window::Native::headerHeight() const {
    int least = 0;
    int natural = 0;
    header.get_preferred_height(least, natural);
    return natural;
}

Rect Window::Native::shownFrame() const {
    int x = 0, y = 0, width = 0, height = 0;
    window.get_position(x, y);
    window.get_size(width, height);
    return fromToolkit({x, y, width, height + (isFullScreen() ? 0 : headerHeight())});
}

Rect Window::Native::frame() const { return wanted_ ? *wanted_ : shownFrame(); }

void Window::Native::setFrame(const Rect& frame) {
    Rect possible = frame;
    possible.width = std::max(frame.width, minSize_.width);
    possible.height = std::max(frame.height, minSize_.height);
    wanted_ = possible;
    const auto area = toToolkit(possible);
    window.resize(std::max(1, area.get_width()), std::max(1, area.get_height() - headerHeight()));
    window.move(area.get_x(), area.get_y());
    if (!isPlaced_) return;
    window.get_display()->flush();
    expectAnswer();
}

// A window manager that refuses says nothing.
void Window::Native::expectAnswer() {
    if (!wanted_) return;
    MainQueue::asyncAfter(250ms, [this, asked = *wanted_, life = std::weak_ptr(life_)] {
        if (!life.expired() && isPlaced_ && wanted_ == asked) wanted_.reset();
    });
}

void Window::Native::setContentSize(Size size) {
    int menu = 0, natural = 0;
    if (menuBar_ != nullptr) menuBar_->get_preferred_height(menu, natural);
    Rect grown = frame();
    const double height = size.height + natural + headerHeight();
    grown.y = grown.top() - height;
    grown.height = height;
    grown.width = size.width;
    setFrame(grown);
}

// Asked of what is inside header bar and border: the toolkit adds those.
void Window::Native::setMinSize(Size size) {
    minSize_ = size;
    column_.set_size_request(whole(size.width), std::max(0, whole(size.height) - headerHeight()));
}

void Window::Native::keepFrameAs(std::string_view name) {
    store_.emplace(name);
    const auto kept = store_->load();
    if (!kept) return;
    if (const auto screen = screenNearest(*kept)) setFrame(fitted(*kept, screen->visibleFrame()));
}

void Window::Native::saveFrameSoon() {
    if (!store_ || saveQueued_) return;
    saveQueued_ = true;
    MainQueue::asyncAfter(500ms, [this, life = std::weak_ptr(life_)] {
        if (life.expired()) return;
        saveQueued_ = false;
        saveFrame();
    });
}

void Window::Native::saveFrame() {
    if (store_ && isFree()) store_->save(frame());
}

} // namespace platform
