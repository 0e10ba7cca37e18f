// What the interface asks of one generation, with what holds when it leaves something out. A plain value.
#pragma once

#include <cstdint>
#include <string>

struct GenerationRequest {
    std::string id; // the interface's own; any text
    std::string instructions;
    std::string prompt;
    bool greedy = true;
    std::int64_t maxTokens = 512;
};
