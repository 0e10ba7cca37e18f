#include "text/text.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

std::string repeat(std::string_view piece, std::size_t times) {
    std::string all;
    for (; times > 0; --times)
        all += piece;
    return all;
}

// Characters that take several code points; and ones a byte count would get wrong.
const char* const characters[] = {
    "a",
    "\r\n",
    "é",
    "e\u0301",
    "o\u0323\u0302\u0308",
    "👍🏽",
    "👨‍👩‍👧‍👦",
    "🇩🇪",
    "❤️",
    "각",
    "각",
    "\u1100\u1161\u11A8",
    "नि",
    "☺",
    "🏴󠁧󠁢󠁥󠁮󠁧󠁿",
    "\x7f",
};

TEST(Characters, AreCountedAndCutAsAPersonSeesThem) {
    for (const std::string character : characters) {
        EXPECT_EQ(text::firstCharacter(character + "x"), character);
        EXPECT_EQ(text::firstCharacter(character), character);

        const auto whole = repeat(character, 3000);
        const auto exact = text::firstCharacters(whole, 3000);
        EXPECT_EQ(exact.text, whole);
        EXPECT_FALSE(exact.truncated) << character;

        const auto longer = whole + character;
        const auto cut = text::firstCharacters(longer, 3000);
        EXPECT_EQ(cut.text, whole);
        EXPECT_TRUE(cut.truncated) << character;
    }
}

TEST(Characters, AtTheEdgesOfCountAndText) {
    EXPECT_EQ(text::firstCharacter(""), "");
    EXPECT_EQ(text::firstCharacters("abc", 0).text, "");
    EXPECT_TRUE(text::firstCharacters("abc", 0).truncated);
    EXPECT_FALSE(text::firstCharacters("", 0).truncated);
    EXPECT_EQ(text::firstCharacters("🇩🇪🇫🇷🇮🇹", 2).text, "🇩🇪🇫🇷");
    EXPECT_EQ(text::firstCharacters("\xff\xfe\xfd", 2).text, "\xff\xfe");
    EXPECT_EQ(text::firstCharacter("\xf0\x9f\x91"), "\xf0\x9f\x91");
}

TEST(Text, LongTextsCostNoMoreThanTheirEnds) {
    const auto field = repeat("Straße 👍🏽 ", 600'000); // 10 MB
    const auto start = std::chrono::steady_clock::now();
    for (int times = 0; times < 100; ++times) {
        EXPECT_TRUE(text::firstCharacters(text::trimWhitespaceAndNewlines(field), 3000).truncated);
        EXPECT_FALSE(text::equalStrings(field, std::string_view(field).substr(1)));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(Trim, TakesSeparatorsAndNewlinesFromBothEndsOnly) {
    const struct {
        std::string text, trimmed;
    } cases[] = {
        {"", ""},
        {" \r\n ", ""},
        {"\n a  b \v\f", "a  b"},
        {"\u0085\u00A0\u1680\u2003\u2028\u2029\u202F\u3000x\u2003\u0085", "x"},
        {"\tx\t", "\tx\t"},                 // a tab is no separator
        {"\u200Bx\uFEFF", "\u200Bx\uFEFF"}, // nor is what has no width
        {" \xff ", "\xff"},
        {" \x80\x80\xe2\x80 ", "\x80\x80\xe2\x80"},
    };
    for (const auto& [text, trimmed] : cases)
        EXPECT_EQ(text::trimWhitespaceAndNewlines(text), trimmed) << text;
}

TEST(Equality, IsCanonicalEquivalence) {
    const auto far = repeat("filler ", 1000);
    const struct {
        std::string a, b;
        bool equal;
    } cases[] = {
        {"", "", true},
        {"", "a", false},
        {"é", "e\u0301", true},
        {"e", "e\u0301", false},
        {"e\u0301", "e\u0300", false},
        {"a\u0323\u0307", "a\u0307\u0323", true}, // marks of different places, in any order
        {"a\u0300\u0301", "a\u0301\u0300", false},
        {"각", "\u1100\u1161\u11A8", true},
        {"가\u11A8", "\u1100\u1161\u11A8", true},
        {"\u1100\u1161\u11A8\u11A8", "각", false},
        {"Å", "\u212B", true},
        {"ﬁ", "fi", false}, // compatibility is not equivalence
        {"a", "A", false},
        {far + "é" + far + "ö", far + "e\u0301" + far + "o\u0308", true},
        {far + "é" + far + "ö", far + "e\u0301" + far + "o\u0307", false},
        {repeat("é", 5000), repeat("e\u0301", 5000), true},
        {repeat("é", 5000) + "x", repeat("e\u0301", 5000), false},
        {"\xff", "\xff", true},
        {"\xff", "\xfe", false},
        {"é\xff", "e\u0301\xff", true},
        {"a\xcc", "a\u0301", false},
    };
    for (const auto& [a, b, equal] : cases) {
        EXPECT_EQ(text::equalStrings(a, b), equal) << a << " / " << b;
        EXPECT_EQ(text::equalStrings(b, a), equal) << b << " / " << a;
    }
}

TEST(LowerCase, IsFullAndTheSameInEveryLanguage) {
    EXPECT_EQ(text::lowercased("COM.Example.ÄÖ"), "com.example.äö");
    EXPECT_EQ(text::lowercased("ΣΊΣΥΦΟΣ"), "σίσυφος");
    EXPECT_EQ(text::lowercased("İI"), "i\u0307i");
    EXPECT_EQ(text::lowercased("A\xff"), "a\xff");
}

} // namespace
