// Which words of two texts are marked. In the tables a mark is written as [brackets].
#include "rewriting/differences.h"
#include "rewriting/matches.h"
#include "rewriting/words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

namespace quillmark {
namespace {

// The text with brackets around the spans.
std::string marked(const std::string& text, const std::vector<Span>& spans) {
    std::string result;
    std::size_t position = 0;
    for (const char c : text + '\0') {
        if ((c & 0xC0) != 0x80) {
            for (const auto& span : spans) {
                if (span.end == position) result += ']';
                if (span.start == position) result += '[';
            }
            ++position;
        }
        if (c != '\0') result += c;
    }
    return result;
}

std::string plain(std::string text) {
    std::erase_if(text, [](char c) { return c == '[' || c == ']'; });
    return text;
}

TEST(Differences, MarksTheWordsThatChanged) {
    const struct {
        const char *before, *after;
        std::size_t count;
    } table[]{
        {"", "", 0},
        {"same as ever", "same as ever", 0},
        {"", "[all new]", 1},
        {"[all gone]", "", 1},
        {"i [recieved teh] proofs", "i [received the] proofs", 1},
        {"[i] know [alot] of it[ ].", "[I] know [a lot] of it.", 3},
        {"one[  ]two", "one[ ]two", 1},
        {"one[ ]two", "one[\n\n]two", 1},
        {"tail[ \n]", "tail", 1},
        {"so many words", "so [very] many words", 1},
        {"the [the] end", "the end", 1},
        {"저는 [학교애] 갔어요.", "저는 [학교에] 갔어요.", 1},
        {"أنا [احب] القراءة", "أنا [أحب] القراءة", 1},
        {"fine 👩‍👩‍👧 [🎉]", "fine 👩‍👩‍👧 [🎊🎊]", 1},
        {"我[喜欢]她", "我[讨厌]她", 1},
    };
    for (const auto& [before, after, count] : table) {
        const auto found = differences(plain(before), plain(after));
        EXPECT_EQ(marked(plain(before), found.removed), before);
        EXPECT_EQ(marked(plain(after), found.added), after);
        EXPECT_EQ(found.count, count) << after;
        EXPECT_FALSE(found.anew) << after;
    }
}

TEST(Differences, MarksNothingWhereHardlyAWordIsLeft) {
    const auto found = differences("Thank you very much for the proofs that you sent on Monday.",
                                   "Vielen Dank für die Fahnen, die Sie mir am Montag geschickt haben.");
    EXPECT_TRUE(found.anew);
    EXPECT_TRUE(found.removed.empty() && found.added.empty());
}

// What is not marked must be the same words in the same order, whatever was done to a text.
TEST(Differences, LeavesTheSameWordsUnmarkedOnBothSides) {
    std::mt19937 random(7);
    const std::vector<std::string> words{"one", "two", "three", "넷", "خمسة", "six", ",", "the", "🎉"};
    const auto pick = [&](std::size_t below) { return random() % below; };
    for (int round = 0; round < 400; ++round) {
        std::vector<std::string> before(pick(60));
        for (auto& word : before)
            word = words[pick(words.size())];
        auto after = before;
        for (auto changes = pick(20); changes > 0; --changes) {
            const auto at = after.begin() + static_cast<std::ptrdiff_t>(pick(after.size() + 1));
            if (at == after.end() || pick(3) == 0)
                after.insert(at, words[pick(words.size())]);
            else if (pick(2) == 0)
                after.erase(at);
            else
                std::iter_swap(at, after.begin());
        }
        const auto join = [](const std::vector<std::string>& list) {
            std::string text;
            for (const auto& word : list)
                text += word + ' ';
            return text;
        };
        const auto unmarked = [](const std::string& text, const std::vector<Span>& spans) {
            std::string left;
            for (const auto& word : wordsOf(text))
                if (std::none_of(spans.begin(), spans.end(), [&](const Span& span) {
                        return span.start < word.end && word.start < span.end;
                    }))
                    left += std::string(word.text) + ' ';
            return left;
        };
        const auto a = join(before), b = join(after);
        const auto found = differences(a, b);
        EXPECT_TRUE(found.anew || unmarked(a, found.removed) == unmarked(b, found.added)) << a << "\n" << b;
    }
}

TEST(Differences, MarksMoveWithTheTextThatAPersonEdits) {
    const std::string before = "er läuft schnell heim";
    const std::vector<Span> marks{{3, 8}, {9, 16}}; // "läuft" and "schnell"
    const struct {
        const char* after;
        std::vector<Span> moved;
    } table[]{
        {"wer läuft schnell heim", {{4, 9}, {10, 17}}},
        {"er läuüft schnell heim", {{3, 9}, {10, 17}}},
        {"er lauft schnell heim", {{3, 8}, {9, 16}}},
        {"er läuft schnell heim!", {{3, 8}, {9, 16}}},
        {"er läuft heim", {{3, 8}}},
        {"er lälell heim", {{3, 5}, {5, 9}}},
        {"", {}},
        {"er läuft schnell heim", {{3, 8}, {9, 16}}},
    };
    for (const auto& [after, moved] : table)
        EXPECT_EQ(movedByEdit(marks, before, after), moved) << after;
}

// Against the textbook's table: where texts are short, no match is missed.
TEST(Matches, FindsAsManyAsThereAre) {
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        std::vector<int> a(random() % 12), b(random() % 12);
        for (auto* values : {&a, &b})
            for (int& value : *values)
                value = static_cast<int>(random() % 4) + (random() % 8 == 0 ? 10 * round : 0);
        std::vector<std::vector<std::size_t>> best(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
        for (std::size_t i = 1; i <= a.size(); ++i)
            for (std::size_t j = 1; j <= b.size(); ++j)
                best[i][j] =
                    a[i - 1] == b[j - 1] ? best[i - 1][j - 1] + 1 : std::max(best[i - 1][j], best[i][j - 1]);
        const auto found = matches(a, b);
        for (const auto& [i, j] : found)
            EXPECT_EQ(a[i], b[j]);
        for (std::size_t k = 1; k < found.size(); ++k) {
            EXPECT_LT(found[k - 1].first, found[k].first);
            EXPECT_LT(found[k - 1].second, found[k].second);
        }
        EXPECT_EQ(found.size(), best[a.size()][b.size()]);
    }
}

// Texts of 30,000 characters that share their words but not their order are the worst there are.
TEST(Differences, TakesLessThanASecondForTheWorstTexts) {
    std::mt19937 random(5);
    std::vector<std::string> words;
    for (int i = 0; i < 5000; ++i)
        words.push_back("w" + std::to_string(random() % (random() % 2 == 0 ? 50 : 3000)));
    const auto join = [&] {
        std::string text;
        for (const auto& word : words)
            text += word + ' ';
        return text;
    };
    const auto before = join();
    std::shuffle(words.begin(), words.end(), random);
    const auto after = join();
    const auto start = std::chrono::steady_clock::now();
    differences(before, after);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

} // namespace
} // namespace quillmark
