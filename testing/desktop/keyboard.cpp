#include "testing/desktop/keyboard.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace testbed {

namespace {

bool isOnTheDesk(const XIDeviceInfo& one) {
    return one.use == XISlaveKeyboard && !std::string_view(one.name).ends_with("XTEST keyboard");
}

KeySym symbolOf(const std::string& name) {
    static const std::map<std::string, const char*> sides{
        {"Control", "Control_L"}, {"Shift", "Shift_L"}, {"Alt", "Alt_L"}, {"Super", "Super_L"}};
    const auto side = sides.find(name);
    return XStringToKeysym(side == sides.end() ? name.c_str() : side->second);
}

} // namespace

struct Keyboard::Device {
    Display* display = XOpenDisplay(nullptr);
    XDevice* device = nullptr;

    Device() {
        if (display == nullptr) throw std::runtime_error("There is no display. Use script/virtual-desktop.");
        int count = 0;
        XIDeviceInfo* devices = XIQueryDevice(display, XIAllDevices, &count);
        const auto* found = std::find_if(devices, devices + count, isOnTheDesk);
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

Keyboard::Keyboard() : device_(std::make_unique<Device>()) {}
Keyboard::~Keyboard() { letGoAll(); }

::Display* Keyboard::display() const { return device_->display; }

void Keyboard::hold(std::string_view keys) {
    for (const KeyCode key : codes(keys))
        fake(key, true);
}

void Keyboard::letGo(std::string_view keys) {
    for (const KeyCode key : codes(keys))
        fake(key, false);
}

void Keyboard::letGoAll() {
    while (!down_.empty())
        fake(down_.back(), false);
}

void Keyboard::press(std::string_view keys) {
    const auto pressed = codes(keys);
    for (const KeyCode key : pressed)
        fake(key, true);
    for (auto key = pressed.rbegin(); key != pressed.rend(); ++key)
        fake(*key, false);
}

void Keyboard::press(KeyCode key) {
    fake(key, true);
    fake(key, false);
}

bool Keyboard::nothingIsHeld() const {
    char keys[32]{};
    XQueryKeymap(display(), keys);
    XkbStateRec state{};
    XkbGetState(display(), XkbUseCoreKbd, &state);
    return std::all_of(std::begin(keys), std::end(keys), [](char key) { return key == 0; }) &&
           state.base_mods == 0 && state.latched_mods == 0;
}

std::vector<KeyCode> Keyboard::codes(std::string_view keys) const {
    std::vector<KeyCode> result;
    for (std::size_t start = 0; start <= keys.size();) {
        const std::size_t end = std::min(keys.find('+', start), keys.size());
        const std::string name(keys.substr(start, end - start));
        result.push_back(XKeysymToKeycode(display(), symbolOf(name)));
        if (result.back() == 0) throw std::runtime_error("This keyboard has no key " + name + ".");
        start = end + 1;
    }
    return result;
}

void Keyboard::fake(KeyCode key, bool down) {
    XTestFakeDeviceKeyEvent(display(), device_->device, key, down ? True : False, nullptr, 0, CurrentTime);
    XSync(display(), False);
    std::erase(down_, key);
    if (down) down_.push_back(key);
}

} // namespace testbed
