#include "rewrite.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quillmark {
namespace {

TEST(Rewrite, CorrectsAndLeavesTheCorrectedTextAlone) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", ""},
        {"i  recieved teh letter .  dont wait !", "I received the letter. Don't wait!"},
        {"Teh end. Alot of it, adn i'm glad.", "The end. A lot of it, and I'm glad."},
        {"one line  \nteh next. and more", "One line\nthe next. And more"},
        {"    indented \t text.", "    Indented text."},
        // A piece out of a sentence keeps its small first letter and the blank that parts it from what
        // follows.
        {"teh quick ", "the quick "},
        {"see notes.txt at example.org", "See notes.txt at example.org"},
        // Words that merely contain a misspelling, or whose letters go beyond ASCII, are words of their own.
        {"cantata, stehen, \xC3\xA9teh, teh\xC3\xA9", "cantata, stehen, \xC3\xA9teh, teh\xC3\xA9"},
        {"\xC3\xA9t\xC3\xA9. \xE6\x97\xA5\xE6\x9C\xAC. ok",
         "\xC3\xA9t\xC3\xA9. \xE6\x97\xA5\xE6\x9C\xAC. Ok"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(rewrite(text), expected);
        EXPECT_EQ(rewrite(expected), expected) << "a second rewrite changed it again";
    }
}

} // namespace
} // namespace quillmark
