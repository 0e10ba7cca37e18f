// What a soak run draws by lot. The same seed gives the same draws, whatever has happened before.
#pragma once

#include <chrono>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace soak {

class Chance {
public:
    // One for each step, so that what a step does depends on the seed and its number alone.
    Chance(unsigned long seed, unsigned long step);

    // From 0 to `count` - 1.
    std::size_t below(std::size_t count);
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <class Range>
    auto& from(Range& range) {
        return range[below(range.size())];
    }
    std::size_t byWeight(const std::vector<int>& weights);

    // A few words that no other text has, with letters of several scripts, perhaps on several lines.
    std::string words(bool lines);

    // Sleeps for less than that.
    void pause(std::chrono::milliseconds most);

private:
    std::mt19937_64 numbers_;
    unsigned long step_;
    int texts_ = 0;
};

} // namespace soak
