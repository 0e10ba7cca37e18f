#pragma once

// Sizes and places in points. Screen coordinates grow to the right and upwards from the lower left corner of
// the main screen.
namespace platform {

struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double top() const { return y + height; }
    bool operator==(const Rect&) const = default;
};

} // namespace platform
