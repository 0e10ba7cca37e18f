#include "platform/linux/x11/instance/sole_instance.h"

#include "platform/linux/x11/base/server_grab.h"
#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/instance/protocol.h"

#include <utility>

namespace platform {
namespace {

using x11::XlibConnection;

void notify(const XSelectionRequestEvent& request, Atom property) {
    XlibConnection& connection = *XlibConnection::shared();
    XEvent reply{};
    reply.xselection.type = SelectionNotify;
    reply.xselection.requestor = request.requestor;
    reply.xselection.selection = request.selection;
    reply.xselection.target = request.target;
    reply.xselection.time = request.time;
    reply.xselection.property = property;
    XSendEvent(connection.display(), request.requestor, False, NoEventMask, &reply);
    XFlush(connection.display());
}

void answer(const XSelectionRequestEvent& request, const InstanceAnswer& answer) {
    XlibConnection& connection = *XlibConnection::shared();
    const std::string bytes = x11::instance::encode(answer);
    XChangeProperty(connection.display(), request.requestor, request.property, connection.atom("UTF8_STRING"),
                    8, PropModeReplace, reinterpret_cast<const unsigned char*>(bytes.data()),
                    static_cast<int>(bytes.size()));
    notify(request, request.property);
}

} // namespace

std::unique_ptr<SoleInstance> SoleInstance::take(Handler handler) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return nullptr;
    Display* display = connection->display();
    const ::Window window = x11::instance::makeWindow(*connection, {});
    const Atom selection = x11::instance::selection(*connection);
    bool isFree = false;
    {
        const x11::ServerGrab grab; // no other process takes it between the question and the taking
        isFree = XGetSelectionOwner(display, selection) == None;
        if (isFree) XSetSelectionOwner(display, selection, window, CurrentTime);
    }
    XSync(display, False);
    if (isFree) return std::make_unique<SoleInstance>(window, std::move(handler));
    XDestroyWindow(display, window);
    return nullptr;
}

SoleInstance::SoleInstance(::Window window, Handler handler)
    : window_(window), handler_(std::move(handler)), events_([this](const XEvent& event) {
          if (event.type == SelectionRequest && event.xselectionrequest.owner == window_)
              handle(event.xselectionrequest);
      }) {}

SoleInstance::~SoleInstance() {
    XDestroyWindow(XlibConnection::shared()->display(), window_);
    XSync(XlibConnection::shared()->display(), False);
}

void SoleInstance::handle(const XSelectionRequestEvent& event) const {
    XlibConnection& connection = *XlibConnection::shared();
    const auto request = x11::instance::request(connection, event.target);
    if (!request || event.property == None) return notify(event, None);
    handler_(*request, x11::instance::callerOf(connection, event.requestor),
             [event](const InstanceAnswer& said) { answer(event, said); });
}

} // namespace platform
