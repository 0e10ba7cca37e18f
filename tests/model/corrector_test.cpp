// The built-in corrector, word by word and as a model.
#include "platform/linux/correction_pieces.h"
#include "platform/linux/corrector.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string corrected(const std::string& text) {
    static platform::Corrector corrector;
    std::string result;
    for (const auto& piece : platform::correctionPieces(text)) {
        result += piece.before;
        result += piece.isOrdinary ? corrector.correct(piece.word) : std::string(piece.word);
    }
    return result;
}

TEST(Corrector, CorrectsTyposAndKeepsWhatStandsAroundThem) {
    const std::pair<const char*, const char*> cases[] = {
        {"teh", "the"},
        {"i recieved it,", "I received it,"},
        {"Teh  wierd\nfreind!", "The  weird\nfriend!"},
        {"definately seperate", "definitely separate"},
        {"untill tommorow", "until tomorrow"},
        {"alot of thier adress", "a lot of their address"},
        {"i dont beleive wich", "I don't believe which"},
        {"didn\u2019t dont it occured", "didn\u2019t don't it occurred"},
        {"on monday", "on Monday"},
        {"\xFF\xFEteh\xC3", "\xFF\xFEthe\xC3"},
        {"neccessary goverment", "necessary government"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(corrected(text), expected);
}

TEST(Corrector, LeavesAloneWhatIsNoMisspeltEnglishWord) {
    for (const std::string text :
         {"", "  ", "The letter's ready; isn't it?", "https://exmaple.org/teh", "teh@exmaple.org", "src/teh",
          "teh2", "TEH", "getTeh", "file_nmae", "Mrs Okafor and Anselm", "cafe naive", "\u00e9teh",
          "\u65e5\u672c\u8a9e", "\u0442\u0435\u0445", "qzxkvbnw"})
        EXPECT_EQ(corrected(text), text);
}

} // namespace
