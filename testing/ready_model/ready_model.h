// A language model whose answers are ready, and the system it belongs to: the test's own definition of that
// part of the seam, for generations on the real background threads with no model to wait for.
#pragma once

#include <cstddef>
#include <string>

namespace ready_model {

// What every generation from now on is told: this many snapshots, one after the other, the first of them this
// text, each of the others one letter longer.
void answer(std::size_t snapshots, std::string text);

// From now on every generation waits for its first snapshot until release().
void hold();
std::size_t held();
void release();

} // namespace ready_model
