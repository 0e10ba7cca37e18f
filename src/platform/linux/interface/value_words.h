#pragma once

#include "flutter/encodable_value.h"

#include <string>

namespace platform {

// A value on one line, as a trace shows it: {"text": string of 12 bytes, "truncated": false}. Strings are
// shown with `texts` only, except those that never hold a text of the user's, such as identifiers.
std::string words(const flutter::EncodableValue& value, bool texts);

} // namespace platform
