// How many bytes the program has asked the heap for since it started.
#pragma once

#include <cstddef>

std::size_t allocatedBytes();
