#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace platform {

// A value's stored fields, in their declared order. A plain value.
struct Mirror {
    // An integer of the native type, or the textual description of a value of any other type.
    using Value = std::variant<std::int64_t, std::string>;

    struct Child {
        std::optional<std::string> label; // absent for a field without a name
        Value value;
    };

    std::vector<Child> children;
};

} // namespace platform
