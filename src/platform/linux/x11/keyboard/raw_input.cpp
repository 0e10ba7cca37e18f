#include "platform/linux/x11/keyboard/raw_input.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/keyboard/keyboards.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace platform::x11 {
namespace {

int watches = 0;

// The host's own requests, by their numbers on its connection, whose events are still to come.
struct Requests {
    unsigned long first = 0;
    unsigned long end = 0;
};
std::vector<Requests> posted;

void select(bool on) {
    XlibConnection& connection = *XlibConnection::shared();
    std::array<unsigned char, XIMaskLen(XI_RawButtonPress)> mask{};
    if (on)
        for (const int type : {XI_RawKeyPress, XI_RawKeyRelease, XI_RawButtonPress})
            XISetMask(mask.data(), type);
    XIEventMask wanted{XIAllMasterDevices, int{mask.size()}, mask.data()};
    XISelectEvents(connection.display(), connection.root(), &wanted, 1);
}

bool isSynthetic(const XIRawEvent& event) { return event.sourceid == static_cast<int>(syntheticKeyboard()); }

// An event carries the number of the last request that the server had handled by then.
bool isOwn(const XIRawEvent& event) {
    std::erase_if(posted, [&](const Requests& requests) { return requests.end <= event.serial; });
    return isSynthetic(event) && std::ranges::any_of(posted, [&](const Requests& requests) {
               return requests.first <= event.serial;
           });
}

} // namespace

RawInput::RawInput(Handler handler)
    : handler_(std::move(handler)), listener_([this](const XEvent& event) { handle(event); }) {
    if (xInputOpcode() && watches++ == 0) select(true);
}

RawInput::~RawInput() {
    if (xInputOpcode() && --watches == 0) select(false);
}

void RawInput::handle(const XEvent& event) const {
    if (event.type != GenericEvent || event.xcookie.extension != xInputOpcode()) return;
    const auto& raw = *static_cast<const XIRawEvent*>(event.xcookie.data);
    if (isOwn(raw)) return;
    const auto detail = static_cast<unsigned>(raw.detail);
    if (raw.evtype == XI_RawKeyPress) handler_(Kind::keyDown, detail, isSynthetic(raw));
    if (raw.evtype == XI_RawKeyRelease) handler_(Kind::keyUp, detail, isSynthetic(raw));
    const bool isWheel = detail >= 4 && detail <= 7;
    if (raw.evtype == XI_RawButtonPress && !isWheel) handler_(Kind::buttonDown, detail, isSynthetic(raw));
}

RawInput::Posting::Posting() {
    if (watches > 0) posted.push_back({XNextRequest(XlibConnection::shared()->display()), ~0UL});
}

RawInput::Posting::~Posting() {
    Display* display = XlibConnection::shared()->display();
    if (!posted.empty() && posted.back().end == ~0UL) posted.back().end = XNextRequest(display);
    XNoOp(display); // what others post from now on comes with another number
}

} // namespace platform::x11
