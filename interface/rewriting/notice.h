// What the person is told outside the window, in the desktop's own way.
#pragma once

#include <string>

namespace quillmark {

struct Notice {
    std::string title = {};
    std::string body = {}; // never holds the person's text: desktops keep notices
    bool mayShow = false;  // offers to show the window
    bool mayCopy = false;  // offers to copy the rewrite
};

} // namespace quillmark
