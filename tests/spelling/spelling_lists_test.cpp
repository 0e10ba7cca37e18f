// How good the corrector is, on lists of hundreds of words. What it cannot do today is in the numbers.
#include "spelling/english_corrector.h"
#include "testing/spelling_lists/spelling_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::IsEmpty;
using testing::SizeIs;

quillmark::EnglishCorrector& english() {
    static quillmark::EnglishCorrector corrector;
    return corrector;
}

TEST(SpellingLists, MostMisspelledWordsAreCorrected) {
    const auto result = spelling_lists::misspellings(english());
    EXPECT_GT(result.all, 600u);
    EXPECT_GE(result.right * 100, result.all * 93) << result.right << " of " << result.all;
    EXPECT_THAT(result.wrongOnes, SizeIs(testing::Le(result.all / 100)));
}

TEST(SpellingLists, WordsThatAreRightStay) {
    for (const char* list : {"names", "british"}) {
        const auto result = spelling_lists::words(list, english());
        EXPECT_GT(result.all, 100u) << list;
        EXPECT_THAT(result.wrongOnes, IsEmpty()) << list;
    }
    const auto technical = spelling_lists::words("technical", english());
    EXPECT_GT(technical.all, 800u);
    EXPECT_THAT(technical.wrongOnes, SizeIs(testing::Le(5u)));
}

TEST(SpellingLists, TextsOfOtherLanguagesAndCodeStay) {
    quillmark::Languages unknown({}), preferred({"en"});
    EXPECT_THAT(spelling_lists::texts("foreign", unknown).wrongOnes, IsEmpty());
    EXPECT_THAT(spelling_lists::texts("foreign", preferred).wrongOnes, SizeIs(testing::Le(2)));
    EXPECT_THAT(spelling_lists::texts("unchanged", preferred).wrongOnes, IsEmpty());
}

} // namespace
