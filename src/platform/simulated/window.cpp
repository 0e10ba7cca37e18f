#include "platform/window.h"

#include "platform/simulated/world.h"

#include <algorithm>

namespace platform {

using simulated::World;

Window::Window(Rect contentRect, std::uint64_t styleMask, BackingStoreType backing, bool defer)
    : native_(std::make_unique<Native>(*this)) {
    native_->frame = contentRect;
    native_->styleMask = styleMask;
    native_->backing = backing;
    native_->defer = defer;
    World::current().hostWindows.push_back(this);
}

Window::~Window() {
    if (World* world = World::currentOrNull()) std::erase(world->hostWindows, this);
}

Window::Native& Window::native() const { return *native_; }

void Window::awakeFromNib() { native_->awoken = true; }

void Window::setContentViewController(std::unique_ptr<flutter::ViewController> controller) {
    native_->contentViewController = std::move(controller);
}
flutter::ViewController* Window::contentViewController() const {
    return native_->contentViewController.get();
}

// The upper left corner stays.
void Window::setContentSize(Size size) {
    const Rect& old = native_->frame;
    native_->place({old.x, old.top() - size.height, size.width, size.height});
}
void Window::setMinSize(Size size) { native_->minSize = size; }
void Window::setTitle(std::string_view title) { native_->title = title; }
std::string Window::title() const { return native_->title; }
void Window::setTitleVisibility(WindowTitleVisibility visibility) { native_->titleVisibility = visibility; }
void Window::setTitlebarAppearsTransparent(bool transparent) {
    native_->titlebarAppearsTransparent = transparent;
}
void Window::setStyleMask(std::uint64_t styleMask) { native_->styleMask = styleMask; }
std::uint64_t Window::styleMask() const { return native_->styleMask; }
void Window::setMovableByWindowBackground(bool movable) { native_->movableByWindowBackground = movable; }

void Window::center() {
    const auto screen = Screen::mainScreen();
    if (!screen) return;
    const Rect area = screen->visibleFrame();
    const Rect& old = native_->frame;
    native_->place({area.x + (area.width - old.width) / 2, area.y + (area.height - old.height) / 2, old.width,
                    old.height});
}

void Window::setFrameAutosaveName(std::string_view name) {
    World& world = World::current();
    native_->frameAutosaveName = name;
    const auto kept = world.savedFrames.find(name);
    if (kept == world.savedFrames.end()) return;
    const Rect frame = kept->second;
    const bool fits = std::ranges::any_of(world.screens, [&](const Rect& screen) {
        return frame.x >= screen.x && frame.x + frame.width <= screen.x + screen.width &&
               frame.y >= screen.y && frame.top() <= screen.top();
    });
    if (fits) native_->place(frame);
}

void Window::setCollectionBehavior(std::uint64_t behavior) { native_->collectionBehavior = behavior; }
void Window::setReleasedWhenClosed(bool released) { native_->releasedWhenClosed = released; }
void Window::setDelegate(WindowDelegate* delegate) { native_->delegate = delegate; }

void Window::miniaturize() {
    native_->miniaturized = true;
    native_->key = false;
    World::current().note("window miniaturized");
}

void Window::deminiaturize() {
    native_->miniaturized = false;
    World::current().note("window deminiaturized");
}

void Window::makeKeyAndOrderFront() {
    World& world = World::current();
    for (Window* window : world.hostWindows)
        window->native().key = false;
    native_->visible = true;
    native_->key = true;
    world.note("window ordered front");
}

void Window::orderOut() {
    native_->visible = false;
    native_->key = false;
    World::current().note("window ordered out");
}

void Window::setLevel(std::int64_t level) { native_->level = level; }
bool Window::isZoomed() const { return native_->zoomed; }
Rect Window::frame() const { return native_->frame; }

void Window::setFrame(Rect frame, bool display) {
    native_->place(frame);
    if (display) ++native_->redisplays;
}

std::optional<Screen> Window::screen() const {
    if (!native_->visible) return std::nullopt;
    const Rect& frame = native_->frame;
    for (const Rect& screen : World::current().screens) {
        if (frame.x < screen.x + screen.width && screen.x < frame.x + frame.width && frame.y < screen.top() &&
            screen.y < frame.top()) {
            return Screen(screen);
        }
    }
    return std::nullopt;
}

} // namespace platform
