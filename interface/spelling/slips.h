#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quillmark {

// How unlikely it is that somebody who typed one word meant another: about one for each slip of the fingers
// or of the memory, less for the common ones. The meant word is given letter by letter and can be taken back,
// so that words that begin alike share the work. Both in small letters from a to z.
class Slips {
public:
    static constexpr std::size_t mostLetters = 30; // of either word

    explicit Slips(std::string_view typed);

    // The meant word's first letters are as they were then, and go on with this one.
    void set(std::size_t at, char letter);
    // Of the meant word that ends after so many letters.
    double cost(std::size_t letters) const;
    // No meant word that begins with so many letters costs less.
    double leastCost(std::size_t letters) const;

private:
    double missing(std::size_t row) const;
    double extra(std::size_t column) const;

    std::string_view typed_;
    std::array<char, mostLetters + 1> meant_{};
    std::array<std::array<double, mostLetters + 1>, mostLetters + 1>
        costs_{};                                 // by letters meant and letters typed
    std::array<double, mostLetters + 1> least_{}; // of each row of these
};

} // namespace quillmark
