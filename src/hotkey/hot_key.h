// One system-wide key combination, registered for as long as the object lives. Main thread only.
#pragma once

#include "platform/hot_key.h"

#include <cstdint>
#include <functional>
#include <memory>

class HotKey {
public:
    // Null when the desktop refuses the handler or the combination; nothing stays installed then. `callback`
    // runs once for each press, inside the desktop's event handler.
    static std::unique_ptr<HotKey> create(std::uint32_t keyCode, std::uint32_t modifiers,
                                          std::function<void()> callback);

    // Unregisters the combination, then removes the handler.
    ~HotKey();
    HotKey(const HotKey&) = delete;
    HotKey& operator=(const HotKey&) = delete;

private:
    explicit HotKey(std::function<void()> callback);

    platform::EventHotKeyRef hotKeyRef_;
    platform::EventHandlerRef handlerRef_;
    std::function<void()> callback_;
};
