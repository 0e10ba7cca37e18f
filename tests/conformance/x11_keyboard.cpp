#include "conformance/x11_keyboard.h"

#include "platform/hot_key.h"
#include "platform/linux/key_positions.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace conformance {

using namespace platform;

struct X11Keyboard::Device {
    Display* display = XOpenDisplay(nullptr);
    XDevice* device = nullptr;

    Device() {
        if (display == nullptr) throw std::runtime_error("There is no display. Use script/virtual-desktop.");
        int count = 0;
        XIDeviceInfo* devices = XIQueryDevice(display, XIAllDevices, &count);
        const auto* found = std::find_if(devices, devices + count, [](const XIDeviceInfo& one) {
            return one.use == XISlaveKeyboard && !std::string_view(one.name).ends_with("XTEST keyboard");
        });
        if (found != devices + count) device = XOpenDevice(display, static_cast<XID>(found->deviceid));
        XIFreeDeviceInfo(devices);
        if (device == nullptr) throw std::runtime_error("This X server has no keyboard.");
    }
    ~Device() {
        XCloseDevice(display, device);
        XCloseDisplay(display);
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
};

X11Keyboard::X11Keyboard() : device_(std::make_unique<Device>()) {}
X11Keyboard::~X11Keyboard() { releaseAll(); }

void X11Keyboard::hold(CGEventFlags modifiers) {
    using Key = std::pair<CGEventFlags, KeySym>;
    for (const auto& [flag, symbol] :
         {Key(kCGEventFlagMaskShift, XK_Shift_L), Key(kCGEventFlagMaskControl, XK_Control_L),
          Key(kCGEventFlagMaskAlternate, XK_Alt_L), Key(kCGEventFlagMaskCommand, XK_Super_L)}) {
        if ((modifiers & flag) != 0) fake(XKeysymToKeycode(device_->display, symbol), true);
    }
}

void X11Keyboard::releaseAll() {
    while (!down_.empty())
        fake(down_.back(), false);
}

void X11Keyboard::tap(CGKeyCode keyCode) {
    const unsigned char key = x11::xKeyCode(keyCode).value();
    fake(key, true);
    fake(key, false);
}

void X11Keyboard::fake(unsigned char key, bool down) {
    XTestFakeDeviceKeyEvent(device_->display, device_->device, key, down ? True : False, nullptr, 0,
                            CurrentTime);
    XSync(device_->display, False);
    std::erase(down_, key);
    if (down) down_.push_back(key);
}

std::shared_ptr<void> X11Keyboard::grab(CGKeyCode keyCode, std::uint32_t hotKeyModifiers) {
    unsigned mask = 0;
    using Modifier = std::pair<std::uint32_t, unsigned>;
    for (const auto& [modifier, bit] : {Modifier(shiftKey, ShiftMask), Modifier(controlKey, ControlMask),
                                        Modifier(optionKey, Mod1Mask), Modifier(cmdKey, Mod4Mask)}) {
        if ((hotKeyModifiers & modifier) != 0) mask |= bit;
    }
    Display* const display = XOpenDisplay(nullptr);
    XGrabKey(display, x11::xKeyCode(keyCode).value(), mask, DefaultRootWindow(display), False, GrabModeAsync,
             GrabModeAsync);
    XSync(display, False);
    return {display, [](Display* open) { XCloseDisplay(open); }};
}

} // namespace conformance
