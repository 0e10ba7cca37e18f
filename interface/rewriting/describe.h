// A capture in words.
#pragma once

#include "client/desktop.h"

#include <string>
#include <vector>

namespace quillmark {

// The program and the title of its window.
std::string placeOf(const Capture& capture);

// What was read and how much: "Selection, 182 characters".
std::string extentOf(const Capture& capture);

// What the person should know before they rely on it; mostly nothing.
std::vector<std::string> limitsOf(const Capture& capture);

} // namespace quillmark
