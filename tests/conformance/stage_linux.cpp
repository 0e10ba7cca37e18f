#include "conformance/stage.h"
#include "platform/accessibility.h"
#include "platform/linux/accessibility/trust.h"
#include "platform/linux/application/gtk_start.h"
#include "platform/linux/window/native_window.h"
#include "platform/linux/x11/keyboard/key_positions.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/pasteboard_programs.h"

#include <gdk/gdkx.h>
#include <glib.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace conformance {

using testbed::WindowId;

namespace {

// Once for all stages, as at the host's start.
void startDesktop() {
    static const bool started = [] {
        platform::startAccessibility(nullptr);
        return platform::startGtk() && platform::AXIsProcessTrustedWithOptions({});
    }();
    if (!started) throw std::runtime_error("Use script/virtual-desktop.");
}

std::size_t codePoints(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// What follows a key in the program's account of itself.
std::string after(const std::string& dump, std::string_view key) {
    return dump.substr(dump.find(key) + key.size());
}

// The program's account of the one field that has the focus.
std::string focusedField(const std::string& dump) {
    std::string fields = after(dump, "\"fields\": [");
    for (int before = std::stoi(after(dump, "\"focus\": ")); before > 0; --before)
        fields = after(fields, "}");
    return fields;
}

const char* kindName(FieldKind kind) {
    switch (kind) {
    case FieldKind::line:
        return "entry";
    case FieldKind::text:
        return "textview";
    case FieldKind::readOnly:
        return "readonly";
    case FieldKind::password:
        return "password";
    }
    return "";
}

WindowId idOf(const platform::Window& window) {
    const auto gdkWindow = window.native().window.get_window();
    return gdkWindow ? GDK_WINDOW_XID(const_cast<GdkWindow*>(gdkWindow->gobj())) : None;
}

} // namespace

struct OtherProgram::Native {
    Native(testbed::Desktop& desktop, const std::vector<std::string>& descriptions, const std::string& title)
        : fields(desktop, descriptions, title) {}

    mutable testbed::Fields fields;
    std::unique_ptr<pasteboard_test::Owner> owner;

    void signal(int number) const {
        fields.process().signal(number);
        if (owner) owner->program.signal(number);
    }
};

OtherProgram::OtherProgram(std::unique_ptr<Native> native) : native_(std::move(native)) {}
OtherProgram::~OtherProgram() { kill(); }

pid_t OtherProgram::pid() const { return native_->fields.process().pid(); }

std::string OtherProgram::value() const {
    const std::string text = after(focusedField(native_->fields.dump()), "\"text\": \"");
    return text.substr(0, text.find("\", \"selection\""));
}

void OtherProgram::setValue(std::string_view value) {
    native_->fields.command("text 0 " + std::string(value));
}

// This and the next are good for ASCII.
void OtherProgram::select(std::string_view part) {
    const std::size_t start = value().find(part);
    native_->fields.command("select 0 " + std::to_string(start) + " " + std::to_string(start + part.size()));
}

void OtherProgram::leaveField() { native_->fields.command("focus 1"); }

std::string OtherProgram::selected() const {
    const std::string numbers = after(focusedField(native_->fields.dump()), "\"selection\": [");
    const auto start = std::strtoul(numbers.c_str(), nullptr, 10);
    const auto end = std::strtoul(after(numbers, ", ").c_str(), nullptr, 10);
    return value().substr(start, end - start);
}

void OtherProgram::hang() { native_->signal(SIGSTOP); }

void OtherProgram::kill() {
    native_->signal(SIGKILL);
    native_->fields.process().exitStatus();
}

// The program's pasteboard is looked after by a companion without a window.
void OtherProgram::copy(const Offer& offer, std::span<const platform::PasteboardType> undeliverable) {
    std::vector<pasteboard_test::Representation> contents;
    for (const auto& [type, bytes] : offer)
        contents.push_back({type, type, 8, bytes});
    for (const auto& type : undeliverable)
        contents.push_back({type, type, 0, {}});
    native_->owner = std::make_unique<pasteboard_test::Owner>(contents);
}

std::optional<std::string> OtherProgram::pasteboardText() const { return pasteboardBytes("UTF8_STRING"); }

std::optional<std::string> OtherProgram::pasteboardBytes(const platform::PasteboardType& type) const {
    const auto given = pasteboard_test::given(type);
    return given ? std::optional(given->bytes) : std::nullopt;
}

struct Stage::Native {
    testbed::Desktop desktop;
};

Stage::Stage() {
    startDesktop();
    native_ = std::make_unique<Native>();
    if (std::system("setxkbmap us") != 0) throw std::runtime_error("The keyboard layout could not be set.");
}
Stage::~Stage() = default;

std::unique_ptr<OtherProgram> Stage::open(const FieldSetup& setup) {
    auto made = std::make_unique<OtherProgram::Native>(
        native_->desktop, std::vector<std::string>{kindName(setup.kind) + ("=" + setup.value), "entry"},
        setup.title);
    const std::size_t start = codePoints(setup.value.substr(0, setup.value.find(setup.selected)));
    if (!setup.selected.empty())
        made->fields.command("select 0 " + std::to_string(start) + " " +
                             std::to_string(start + codePoints(setup.selected)));
    return std::make_unique<OtherProgram>(std::move(made));
}

void Stage::hold(platform::CGEventFlags modifiers) {
    using Key = std::pair<platform::CGEventFlags, const char*>;
    for (const auto& [flag, name] :
         {Key(platform::kCGEventFlagMaskShift, "Shift"), Key(platform::kCGEventFlagMaskControl, "Control"),
          Key(platform::kCGEventFlagMaskAlternate, "Alt"), Key(platform::kCGEventFlagMaskCommand, "Super")}) {
        if ((modifiers & flag) != 0) native_->desktop.keyboard.hold(name);
    }
}
void Stage::releaseAll() { native_->desktop.keyboard.letGoAll(); }
void Stage::press(platform::CGKeyCode keyCode, platform::CGEventFlags modifiers) {
    hold(modifiers);
    native_->desktop.keyboard.press(platform::x11::xKeyCode(keyCode).value());
    releaseAll();
}

std::shared_ptr<void> Stage::takeHotKey(std::uint32_t keyCode, std::uint32_t modifiers) {
    unsigned mask = 0;
    using Modifier = std::pair<std::uint32_t, unsigned>;
    for (const auto& [modifier, bit] :
         {Modifier(platform::shiftKey, ShiftMask), Modifier(platform::controlKey, ControlMask),
          Modifier(platform::optionKey, Mod1Mask), Modifier(platform::cmdKey, Mod4Mask)}) {
        if ((modifiers & modifier) != 0) mask |= bit;
    }
    Display* const display = XOpenDisplay(nullptr);
    const auto key = platform::x11::xKeyCode(static_cast<platform::CGKeyCode>(keyCode)).value();
    XGrabKey(display, key, mask, DefaultRootWindow(display), False, GrabModeAsync, GrabModeAsync);
    XSync(display, False);
    return {display, [](Display* open) { XCloseDisplay(open); }};
}

bool Stage::shown(const platform::Window& window) const { return !native_->desktop.isHidden(idOf(window)); }
bool Stage::minimised(const platform::Window& window) const {
    return native_->desktop.hasState(idOf(window), "_NET_WM_STATE_HIDDEN");
}
bool Stage::keptAbove(const platform::Window& window) const {
    return native_->desktop.hasState(idOf(window), "_NET_WM_STATE_ABOVE");
}

bool Stage::runUntil(const std::function<bool()>& condition, platform::Seconds within) {
    const auto end = platform::now() + within;
    for (;;) {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        if (condition()) return true;
        if (platform::now() >= end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
}

void Stage::runABit() {
    runUntil([] { return false; }, platform::Seconds{0.2});
}

} // namespace conformance
