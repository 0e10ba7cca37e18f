// Another program's hot key: it has the combination for as long as the object lives.
#pragma once

using Display = struct _XDisplay; // Xlib's header leaves macros behind

namespace testbed {

class KeyGrab {
public:
    // A key by the name of its symbol, with a mask of X modifiers. Throws when a program has it already.
    KeyGrab(const char* key, unsigned modifiers);
    ~KeyGrab();
    KeyGrab(const KeyGrab&) = delete;
    KeyGrab& operator=(const KeyGrab&) = delete;

private:
    ::Display* display_;
};

} // namespace testbed
