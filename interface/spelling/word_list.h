#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

// Words, and which of them somebody may have meant who mistyped one. Any thread may read it.
class WordList {
public:
    // Words in small letters from a to z; others are left out.
    explicit WordList(std::vector<std::string> words);

    bool contains(std::string_view word) const;
    bool empty() const { return words_.empty(); }

    struct Match {
        std::string_view word; // points into the list
        double cost = 0;       // by the slips that it takes (slips.h)
    };
    // Those that cost no more; in a millisecond, for fifty thousand words and a limit of 2.
    std::vector<Match> near(std::string_view typed, double limit) const;

private:
    std::vector<std::string> words_; // sorted
};

} // namespace quillmark
