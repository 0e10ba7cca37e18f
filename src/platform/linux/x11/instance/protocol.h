#pragma once

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/instance/request.h"

#include <optional>

// How a start of the program reaches the host of the same user on the same display. That host owns a
// selection; a request is the conversion of the selection to a target that stands for it, and the answer is
// the converted value. The caller's window says who calls, in the properties that windows have for that. Main
// thread only.
namespace platform::x11::instance {

Atom selection(XlibConnection& connection);

Atom target(XlibConnection& connection, InstanceRequest request);
// Absent for a target that is no request.
std::optional<InstanceRequest> request(XlibConnection& connection, Atom target);

// A window that is never shown, with `caller` as properties.
::Window makeWindow(XlibConnection& connection, const InstanceCaller& caller);
InstanceCaller callerOf(XlibConnection& connection, ::Window window);
// The process that made the window; absent when it does not say.
std::optional<pid_t> processOf(XlibConnection& connection, ::Window window);

std::string encode(const InstanceAnswer& answer);
InstanceAnswer decode(const std::string& bytes);

} // namespace platform::x11::instance
