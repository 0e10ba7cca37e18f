#pragma once

#include "platform/linux/x11/instance/request.h"

namespace platform {

// Does what a later start of the program asks of this one, from the main queue, and answers it.
void handleRequest(InstanceRequest request, const InstanceCaller& caller, const InstanceReply& reply);

} // namespace platform
