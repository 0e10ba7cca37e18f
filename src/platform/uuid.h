#pragma once

#include <string>

namespace platform {

// A fresh random UUID in its text form: 36 characters, upper-case hexadecimal, 8-4-4-4-12 (RFC 4122, version
// 4).
std::string UUIDString();

} // namespace platform
