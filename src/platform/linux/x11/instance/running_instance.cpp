#include "platform/linux/x11/instance/running_instance.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/instance/protocol.h"

#include <poll.h>

#include <chrono>

namespace platform {
namespace {

using x11::XlibConnection;

// A host that reads a large document does not answer for up to 3.5 seconds.
constexpr std::chrono::seconds answerDeadline{5};

// The property with the answer; None when the host refuses or ends; absent when it does neither.
std::optional<Atom> awaitAnswer(Display* display, ::Window window, ::Window host) {
    const auto end = std::chrono::steady_clock::now() + answerDeadline;
    XEvent event{};
    while (!XCheckTypedWindowEvent(display, window, SelectionNotify, &event)) {
        if (XCheckTypedWindowEvent(display, host, DestroyNotify, &event)) return None;
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0) return std::nullopt;
        pollfd answer{ConnectionNumber(display), POLLIN, 0};
        poll(&answer, 1, static_cast<int>(left.count()));
    }
    return event.xselection.property;
}

} // namespace

InstanceCall askRunningInstance(InstanceRequest request, const InstanceCaller& caller) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return {};
    Display* display = connection->display();
    const Atom selection = x11::instance::selection(*connection);
    const Atom target = x11::instance::target(*connection, request);
    const ::Window host = XGetSelectionOwner(display, selection);
    const auto hearItsEnd = [&] { XSelectInput(display, host, StructureNotifyMask); };
    if (host == None || !connection->succeeds(hearItsEnd)) return {};

    InstanceCall call;
    call.process = x11::instance::processOf(*connection, host);
    const ::Window window = x11::instance::makeWindow(*connection, caller);
    XConvertSelection(display, selection, target, target, window, CurrentTime);
    const auto property = awaitAnswer(display, window, host);
    if (!property) {
        call.state = InstanceCall::State::silent;
    } else if (*property != None) {
        call.state = InstanceCall::State::answered;
        call.answer = x11::instance::decode(connection->text(window, *property).value_or(""));
    } else if (XGetSelectionOwner(display, selection) == host) { // else it ended before it could answer
        call.state = InstanceCall::State::answered;
        call.answer = {InstanceAnswer::Outcome::refused,
                       "the running host is of another version and does not know this; quit it and start it "
                       "again."};
    }
    XDestroyWindow(display, window);
    return call;
}

} // namespace platform
