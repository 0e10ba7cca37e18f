// What comes from the host, as texts to compare.
#pragma once

#include "flutter/standard_codec.h"

#include <cstdint>
#include <string>
#include <vector>

// An answer: a value as text ("null", "pasted", "true", "a=1 b=2"), "error CODE: MESSAGE" or "not
// implemented".
std::string describeAnswer(const std::vector<std::uint8_t>& message);

// "REQUEST KIND KEY=VALUE" of an event that holds these three and nothing else.
std::string describeEvent(const std::vector<std::uint8_t>& message);
