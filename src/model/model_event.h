// What the interface is told about a generation. Which key goes with which kind is documented for interfaces.
#pragma once

#include "flutter/encodable_value.h"

#include <string>
#include <string_view>

flutter::EncodableMap modelEvent(const std::string& id, std::string_view kind, std::string_view key,
                                 std::string value);
