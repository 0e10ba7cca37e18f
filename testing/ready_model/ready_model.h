// A language model whose answers are ready, and the system it belongs to: the test's own definition of that
// part of the seam, for generations on the real background threads with no model server. Any thread.
#pragma once

#include <cstddef>
#include <string>

namespace ready_model {

// Generations that have started and have not been told their end.
std::size_t waiting();

// Adds the text to the answer of each of them, on the background threads.
void tell(const std::string& text);

// Ends all of them.
void end();

} // namespace ready_model
