#pragma once

#include "platform/event.h"

#include <memory>
#include <span>

namespace platform::x11 {

// True when the server takes synthetic keystrokes (XTEST).
bool canType();

// True for the keystroke that copies: Control and the key that types C, or that has C on a US keyboard where
// the user has no layout with Latin letters.
bool isCopyKeystroke(const KeyboardEvent& key);

// Waits until the server has typed all that was typed before.
void awaitTyped();

// Keystrokes as this keyboard can type them: keys with their flags, one after the other. Main thread only.
class KeystrokeBatch {
public:
    explicit KeystrokeBatch(std::span<const KeyboardEvent> keys);
    ~KeystrokeBatch();
    KeystrokeBatch(const KeystrokeBatch&) = delete;
    KeystrokeBatch& operator=(const KeystrokeBatch&) = delete;

    // Types them in the window that has the keyboard focus, at once: the server is asked nothing before, and
    // its answer is not waited for. XFlush() sends them, or awaitTyped().
    // Programs see none of the modifiers that people hold, and no key stays down. Types none when the
    // keyboard lacks a key.
    void type() const;

private:
    struct Prepared;
    std::unique_ptr<const Prepared> prepared_;
};

} // namespace platform::x11
