#pragma once

#include <string_view>

namespace platform {

// How unlikely it is that somebody who typed the one meant the other; about one for each slip of the fingers,
// less for the common ones. Compares bytes; both in lower case.
double typingDistance(std::string_view typed, std::string_view meant);

} // namespace platform
