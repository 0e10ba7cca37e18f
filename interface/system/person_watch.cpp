#include "system/person_watch.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <glibmm/main.h>
#include <sigc++/connection.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <vector>

namespace quillmark {

namespace {

template <auto function>
struct With {
    void operator()(auto* object) const { function(object); }
};

std::vector<int> modifierKeys(Display* display) {
    const std::unique_ptr<XModifierKeymap, With<XFreeModifiermap>> map(XGetModifierMapping(display));
    const auto count = static_cast<std::size_t>(map->max_keypermod) * 8;
    return {map->modifiermap, map->modifiermap + count};
}

} // namespace

class PersonWatch::Server {
public:
    explicit Server(Display* display) : display_(display), root_(DefaultRootWindow(display)) {
        int unused = 0;
        if (XQueryExtension(display, "XInputExtension", &xInput_, &unused, &unused) == 0) xInput_ = 0;
        active_ = XInternAtom(display, "_NET_ACTIVE_WINDOW", False);
        io_ = Glib::signal_io().connect(
            [this](Glib::IOCondition) {
                look();
                return true;
            },
            ConnectionNumber(display), Glib::IO_IN);
    }
    ~Server() {
        io_.disconnect();
        XCloseDisplay(display_);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    void begin() {
        select(true);
        look();
        modifiers_ = modifierKeys(display_);
        pressed_ = false;
        front_ = front();
    }

    bool wentOn() {
        XSync(display_, False);
        look();
        return pressed_ || front() != front_;
    }

    bool holdsModifiers() const {
        if (heldOn(XkbUseCoreKbd)) return true;
        int count = 0;
        const std::unique_ptr<XIDeviceInfo, With<XIFreeDeviceInfo>> devices(
            xInput_ != 0 ? XIQueryDevice(display_, XIAllDevices, &count) : nullptr);
        const std::span all(devices.get(), static_cast<std::size_t>(count));
        return std::any_of(all.begin(), all.end(), [this](const XIDeviceInfo& device) {
            return device.use == XISlaveKeyboard && heldOn(static_cast<unsigned>(device.deviceid));
        });
    }

private:
    void select(bool on) {
        if (xInput_ == 0) return;
        std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits{};
        if (on) {
            XISetMask(bits.data(), XI_RawKeyPress);
            XISetMask(bits.data(), XI_RawButtonPress);
        }
        XIEventMask mask{XIAllMasterDevices, static_cast<int>(bits.size()), bits.data()};
        XISelectEvents(display_, root_, &mask, 1);
        XFlush(display_);
    }

    void look() {
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            if (event.xcookie.type != GenericEvent || event.xcookie.extension != xInput_ ||
                XGetEventData(display_, &event.xcookie) == 0)
                continue;
            const auto& raw = *static_cast<const XIRawEvent*>(event.xcookie.data);
            const bool repeated = (raw.flags & XIKeyRepeat) != 0;
            const bool modifier =
                raw.evtype == XI_RawKeyPress &&
                std::find(modifiers_.begin(), modifiers_.end(), raw.detail) != modifiers_.end();
            if (!repeated && !modifier) pressed_ = true;
            XFreeEventData(display_, &event.xcookie);
        }
        if (pressed_) select(false); // nothing more to learn
    }

    Window front() const {
        Atom type = None;
        int format = 0;
        unsigned long count = 0, left = 0;
        unsigned char* value = nullptr;
        XGetWindowProperty(display_, root_, active_, 0, 1, False, XA_WINDOW, &type, &format, &count, &left,
                           &value);
        const std::unique_ptr<unsigned char, With<XFree>> owned(value);
        Window window = None;
        if (type == XA_WINDOW && format == 32 && count == 1) std::memcpy(&window, value, sizeof window);
        return window;
    }

    bool heldOn(unsigned keyboard) const {
        XkbStateRec state{};
        constexpr unsigned modifiers = ShiftMask | ControlMask | Mod1Mask | Mod4Mask;
        return XkbGetState(display_, keyboard, &state) == Success && (state.mods & modifiers) != 0;
    }

    Display* display_;
    Window root_;
    int xInput_ = 0; // the extension's number; 0: the server lacks it
    Atom active_ = None;
    Window front_ = None;
    std::vector<int> modifiers_;
    bool pressed_ = false;
    sigc::connection io_;
};

PersonWatch::PersonWatch() {
    if (Display* display = XOpenDisplay(nullptr)) server_ = std::make_unique<Server>(display);
}

PersonWatch::~PersonWatch() = default;

void PersonWatch::begin() {
    if (server_) server_->begin();
}
bool PersonWatch::wentOn() { return server_ && server_->wentOn(); }
bool PersonWatch::holdsModifiers() { return server_ && server_->holdsModifiers(); }

} // namespace quillmark
