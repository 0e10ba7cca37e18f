// The longest common part of two sequences, fast enough for the words of a book's chapter.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace quillmark {

using Match = std::pair<std::size_t, std::size_t>; // a position in each sequence

// Positions with equal values, rising in both: as many as there can be, save where some hundred values or
// more have changed. Any thread.
std::vector<Match> matches(const std::vector<int>& a, const std::vector<int>& b);

} // namespace quillmark
