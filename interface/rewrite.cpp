#include "rewrite.h"

#include <array>
#include <cctype>
#include <cstddef>
#include <utility>

namespace quillmark {

namespace {

using namespace std::string_view_literals;

constexpr std::array corrections{
    std::pair{"teh"sv, "the"sv},
    std::pair{"adn"sv, "and"sv},
    std::pair{"i"sv, "I"sv},
    std::pair{"im"sv, "I'm"sv},
    std::pair{"i'm"sv, "I'm"sv},
    std::pair{"i've"sv, "I've"sv},
    std::pair{"i'll"sv, "I'll"sv},
    std::pair{"dont"sv, "don't"sv},
    std::pair{"cant"sv, "can't"sv},
    std::pair{"didnt"sv, "didn't"sv},
    std::pair{"alot"sv, "a lot"sv},
    std::pair{"recieve"sv, "receive"sv},
    std::pair{"recieved"sv, "received"sv},
    std::pair{"definately"sv, "definitely"sv},
    std::pair{"seperate"sv, "separate"sv},
    std::pair{"tommorow"sv, "tomorrow"sv},
    std::pair{"wich"sv, "which"sv},
    std::pair{"thier"sv, "their"sv},
    std::pair{"untill"sv, "until"sv},
    std::pair{"occured"sv, "occurred"sv},
    std::pair{"beleive"sv, "believe"sv},
    std::pair{"adress"sv, "address"sv},
    std::pair{"wierd"sv, "weird"sv},
    std::pair{"freind"sv, "friend"sv},
};

bool isBlank(char c) { return c == ' ' || c == '\t'; }
// The bytes of letters beyond ASCII belong to the word around them.
bool isWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || (c & 0x80) != 0; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

std::string correctWord(std::string_view word) {
    std::string lowered;
    for (const char c : word)
        lowered += lower(c);
    for (const auto& [wrong, right] : corrections) {
        if (lowered != wrong) continue;
        std::string result(right);
        if (isUpper(word.front())) result.front() = upper(result.front());
        return result;
    }
    return std::string(word);
}

std::string correctWords(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        // An apostrophe belongs to the word when letters follow it.
        while (end < text.size() && (isWord(text[end]) || (end > at && text[end] == '\'' &&
                                                           end + 1 < text.size() && isWord(text[end + 1]))))
            ++end;
        if (end == at) {
            result += text[at++];
            continue;
        }
        result += correctWord(text.substr(at, end - at));
        at = end;
    }
    return result;
}

// One blank between words, none before punctuation or at a line's end; the blanks that indent a line stay.
std::string tidyBlanks(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        if (!isBlank(text[at])) {
            result += text[at++];
            continue;
        }
        const std::size_t start = at;
        while (at < text.size() && isBlank(text[at]))
            ++at;
        const bool indents = start > 0 ? text[start - 1] == '\n' : true;
        const bool vanishes = at < text.size() && ",.;:!?\n"sv.find(text[at]) != std::string_view::npos;
        // At the very end one blank stays: the text may go on behind what was selected.
        if (indents)
            result += text.substr(start, at - start);
        else if (!vanishes)
            result += ' ';
    }
    return result;
}

std::string capitaliseSentences(std::string text) {
    // What holds no whole sentence may be a piece out of the middle of one.
    bool starts = text.find_first_of(".!?") != std::string::npos;
    bool ended = false;
    for (char& c : text) {
        if (isBlank(c) || c == '\n') {
            starts = starts || ended;
        } else if (isWord(c)) {
            if (starts) c = upper(c);
            starts = false;
            ended = false;
        } else {
            ended = c == '.' || c == '!' || c == '?';
        }
    }
    return text;
}

} // namespace

std::string rewrite(std::string_view text) { return capitaliseSentences(correctWords(tidyBlanks(text))); }

} // namespace quillmark
