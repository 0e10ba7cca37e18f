#include "platform/linux/window/frame.h"

#include "platform/linux/window/screen.h"
#include "platform/linux/window/screen_coordinates.h"
#include "platform/main_queue.h"

#include <gdkmm/screen.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform {
namespace {

using namespace std::chrono_literals;

// A window manager that refuses a frame says nothing.
constexpr Seconds answerDeadline = 250ms;
constexpr Seconds saveDelay = 500ms;
// When a monitor has gone, window managers move windows and panels for a while.
constexpr Seconds monitorsSettle = 1s;

int naturalHeight(const Gtk::Widget* widget) {
    int least = 0;
    int natural = 0;
    if (widget != nullptr) widget->get_preferred_height(least, natural);
    return natural;
}

} // namespace

WindowFrame::WindowFrame(Gtk::Window& window, Gtk::HeaderBar& header, Gtk::Widget& column)
    : window_(window), header_(header), column_(column) {
    window_.signal_map_event().connect([this](GdkEventAny*) {
        placed();
        return false;
    });
    window_.signal_configure_event().connect(
        [this](GdkEventConfigure*) {
            configured();
            return false;
        },
        false);
    window_.signal_window_state_event().connect([this](GdkEventWindowState*) {
        if (!isFree()) wanted_.reset();
        return false;
    });
    watch(header_);
    monitorsChanged_ = window_.get_screen()->signal_monitors_changed().connect([this] {
        refit();
        MainQueue::asyncAfter(monitorsSettle, life_, [this] { refit(); });
    });
}

WindowFrame::~WindowFrame() {
    monitorsChanged_.disconnect();
    if (saveQueued_) save();
}

// Neither maximised nor full screen nor minimised: the frame is the person's own choice.
bool WindowFrame::isFree() const {
    constexpr int bound =
        GDK_WINDOW_STATE_MAXIMIZED | GDK_WINDOW_STATE_FULLSCREEN | GDK_WINDOW_STATE_ICONIFIED;
    return (window_.get_window()->get_state() & Gdk::WindowState(bound)) == Gdk::WindowState(0);
}

bool WindowFrame::hasBars() const {
    return (window_.get_window()->get_state() & Gdk::WINDOW_STATE_FULLSCREEN) == Gdk::WindowState(0);
}

// GTK draws it where no compositing manager draws a shadow; look.cpp gives it the same width on all sides.
int WindowFrame::border() const {
    return hasBars() && window_.get_style_context()->has_class("solid-csd") ? header_.get_allocation().get_x()
                                                                            : 0;
}

Rect WindowFrame::shown() const {
    int x = 0, y = 0, width = 0, height = 0;
    window_.get_position(x, y);
    window_.get_size(width, height);
    const int edge = border();
    return fromToolkit(
        {x - edge, y - edge, width + 2 * edge, height + 2 * edge + (hasBars() ? bars_.header : 0)});
}

Rect WindowFrame::current() const { return wanted_ ? *wanted_ : shown(); }

void WindowFrame::set(const Rect& frame) {
    content_.reset();
    request(frame);
}

void WindowFrame::setContentSize(Size size) {
    content_ = size;
    Rect frame = current();
    const double top = frame.top();
    frame.width = size.width + 2 * border();
    frame.height = size.height + bars_.header + bars_.menu + 2 * border();
    frame.y = top - frame.height;
    request(frame);
}

void WindowFrame::request(const Rect& frame) {
    Rect possible = frame;
    possible.width = std::max(frame.width, minSize_.width);
    possible.height = std::max(frame.height, minSize_.height);
    wanted_ = possible;
    const auto area = toToolkit(possible);
    const int edge = border();
    window_.resize(std::max(1, area.get_width() - 2 * edge),
                   std::max(1, area.get_height() - 2 * edge - bars_.header));
    window_.move(area.get_x() + edge, area.get_y() + edge);
    if (!isPlaced_) return;
    window_.get_display()->flush();
    expectAnswer();
}

void WindowFrame::setMinSize(Size size) {
    minSize_ = size;
    applyMinSize();
}

// Asked of what is below the header bar: GTK adds header bar and border.
void WindowFrame::applyMinSize() {
    column_.set_size_request(std::max(0, whole(minSize_.width) - 2 * border()),
                             std::max(0, whole(minSize_.height) - 2 * border() - bars_.header));
}

void WindowFrame::watch(Gtk::Widget& bar) {
    // Later: GTK forgets a size that is asked for while it lays the window out.
    bar.signal_size_allocate().connect([this](Gtk::Allocation&) {
        if (measuredBars() != bars_) MainQueue::async(life_, [this] { fitBars(); });
    });
}

void WindowFrame::setMenuBar(Gtk::Widget& bar) {
    menuBar_ = &bar;
    watch(bar);
    fitBars();
}

WindowFrame::Bars WindowFrame::measuredBars() const {
    return {naturalHeight(&header_), naturalHeight(menuBar_)};
}

void WindowFrame::fitBars() {
    if (!window_.get_realized()) return; // GTK lays the window out once while it realizes it
    const Bars bars = measuredBars();
    if (bars == bars_) return;
    Rect frame = current();
    const int growth = bars.header + bars.menu - bars_.header - bars_.menu;
    bars_ = bars;
    applyMinSize();
    if (!isPlaced_ && content_) return setContentSize(*content_);
    if (!isFree() || (!isPlaced_ && !wanted_)) return;
    if (isPlaced_) {
        frame.y -= growth;
        frame.height += growth;
    }
    request(onScreen(frame));
}

// Until the window manager shows the window, its events say nothing about the frame: openbox first puts it
// into a frame of its own, and that to its place afterwards.
void WindowFrame::placed() {
    isPlaced_ = true;
    configured();
    expectAnswer();
}

void WindowFrame::configured() {
    if (!isPlaced_) return;
    if (wanted_ == shown()) wanted_.reset();
    if (isFree()) saveSoon();
}

void WindowFrame::expectAnswer() {
    if (!wanted_) return;
    MainQueue::asyncAfter(answerDeadline, life_, [this, asked = *wanted_] {
        if (isPlaced_ && wanted_ == asked) wanted_.reset();
    });
}

void WindowFrame::rememberWhileAway() {
    if (window_.get_mapped() && isFree()) wanted_ = current();
    if (saveQueued_) save();
    isPlaced_ = false;
}

void WindowFrame::restore() {
    if (wanted_) request(onScreen(*wanted_));
}

void WindowFrame::refit() {
    if (!isPlaced_ || !isFree()) return;
    const Rect frame = current();
    if (const Rect fit = onScreen(frame); fit != frame) request(fit);
}

void WindowFrame::keepAs(std::string_view name) {
    store_.emplace(name);
    if (const auto kept = store_->load()) set(onScreen(*kept));
}

void WindowFrame::saveSoon() {
    if (!store_ || std::exchange(saveQueued_, true)) return;
    MainQueue::asyncAfter(saveDelay, life_, [this] { save(); });
}

void WindowFrame::save() {
    saveQueued_ = false;
    if (store_ && isFree()) store_->save(current());
}

} // namespace platform
