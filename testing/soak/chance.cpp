#include "testing/soak/chance.h"

#include <array>
#include <thread>

namespace soak {

Chance::Chance(unsigned long seed, unsigned long step) : step_(step) {
    std::seed_seq both{seed, step};
    numbers_.seed(both);
}

std::size_t Chance::below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(numbers_);
}

std::size_t Chance::byWeight(const std::vector<int>& weights) {
    return std::discrete_distribution<std::size_t>(weights.begin(), weights.end())(numbers_);
}

std::string Chance::words(bool lines) {
    static constexpr std::array some{"teh",   "letter",  "Grüße",  "proofs,", "привет",
                                     "עברית", "안녕",    "\"so\"", "e\u0301", "👩‍👩‍👧",
                                     "a\\b",  "recieved"};
    std::string text = std::to_string(step_) + "." + std::to_string(++texts_);
    for (std::size_t left = below(12); left > 0; --left)
        text += (lines && oneIn(4) ? "\n" : " ") + std::string(from(some));
    return text;
}

void Chance::pause(std::chrono::milliseconds most) {
    std::this_thread::sleep_for(std::chrono::milliseconds(below(static_cast<std::size_t>(most.count()))));
}

} // namespace soak
