#pragma once

#include <string>

namespace testbed {

// A connection to the socket with that path, or -1.
int connectTo(const std::string& path);

} // namespace testbed
