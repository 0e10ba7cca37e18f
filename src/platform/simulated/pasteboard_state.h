#pragma once

#include "platform/pasteboard.h"
#include "platform/simulated/clock.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulated {

class Program;

// One representation of a pasteboard item, as its owner offers it.
struct Representation {
    platform::PasteboardType type;
    // Absent when the owner cannot produce it.
    std::optional<platform::Data> data;
    // How long the owner takes to produce it, each time it is asked.
    Seconds takes{0};

    bool operator==(const Representation&) const = default;
};

using Item = std::vector<Representation>;

Representation text(std::string_view string);
Representation bytes(platform::PasteboardType type, std::vector<std::uint8_t> bytes);
Representation withoutData(platform::PasteboardType type);

// What is on the pasteboard. Replaced as a whole at every change.
struct PasteboardState {
    std::int64_t changeCount = 1;
    std::shared_ptr<const std::vector<Item>> items = std::make_shared<const std::vector<Item>>();
    // The program that offers the items; while it hangs, their data cannot be read. Null when no test cares.
    std::shared_ptr<const Program> owner = nullptr;
    // False: asking for the items fails.
    bool readable = true;
};

} // namespace simulated
