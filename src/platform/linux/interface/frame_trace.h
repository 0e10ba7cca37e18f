#pragma once

#include "flutter/frame.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace platform {

// Writes every frame between the host and its interface into the trace, in words. Main thread only.
class FrameTrace {
public:
    // `isHandled` says whether the host handles a channel.
    explicit FrameTrace(std::function<bool(std::string_view channel)> isHandled);

    // Bytes from the interface, before the host handles them, and frames of the host.
    void received(std::span<const std::uint8_t> bytes);
    void sent(std::span<const std::uint8_t> bytes);

private:
    struct Request {
        std::string name;      // "call 7, "growHeight""
        std::string unhandled; // why a reply of zero bytes would come
        std::chrono::steady_clock::time_point at;
    };
    struct Direction {
        std::string_view arrow;
        flutter::FrameReader reader;
        std::map<std::uint32_t, Request> requests; // without a reply yet, by id
    };

    void read(Direction& direction, Direction& other, std::span<const std::uint8_t> bytes);
    std::string message(Direction& direction, const flutter::Frame& frame);
    static std::string reply(Direction& asked, const flutter::Frame& frame);

    std::function<bool(std::string_view)> isHandled_;
    Direction fromInterface_{"interface → host  ", {}, {}};
    Direction fromHost_{"host → interface  ", {}, {}};
};

} // namespace platform
