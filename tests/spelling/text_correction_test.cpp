// Words, blanks and punctuation marks as a text has them.
#include "spelling/dictionary_corrector.h"
#include "spelling/text_correction.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string corrected(const std::string& text) {
    static quillmark::Languages languages({"en"});
    quillmark::TextCorrection correction(text, languages);
    std::string result;
    while (const auto piece = correction.next())
        result += *piece;
    return result;
}

TEST(TextCorrection, CorrectsWhatIsWrongBeyondDoubt) {
    const std::pair<const char*, const char*> cases[] = {
        {"teh", "the"},
        {"i recieved it,", "I received it,"},
        {"Teh wierd\nfreind!", "The weird\nfriend!"},
        {"definately seperate", "definitely separate"},
        {"untill tommorow", "until tomorrow"},
        {"alot of thier adress", "a lot of their address"},
        {"i dont beleive wich", "I don't believe which"},
        {"didn\u2019t dont it occured", "didn\u2019t don't it occurred"},
        {"\xFF\xFEteh\xC3", "\xFF\xFEthe\xC3"},
        {"neccessary goverment", "necessary government"},
        {"i belive hasnt the suprise speach", "I believe hasn't the surprise speech"},
        {"youre calender and wether", "you're calendar and whether"},
        {"im late and i cant come", "I'm late and I can't come"},
        {"it wont work, hes ill", "it won't work, he's ill"},
        {"on monday , thank you .", "on Monday, thank you."},
        {"the proofs ,thanks !\n", "the proofs, thanks!\n"},
        {"all is well.  then we go", "All is well.  Then we go"},
        {"read  the the letter", "read the letter"},
        {"`2 teh` teh\n```\nteh\n```\nteh `teh", "`2 teh` the\n```\nteh\n```\nthe `teh"},
        {"it is fine. alot of it! is that so? yes.\nthe end",
         "It is fine. A lot of it! Is that so? Yes.\nThe end"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(corrected(text), expected);
}

TEST(TextCorrection, LeavesAloneWhatMayBeMeant) {
    for (const std::string text :
         {"", "  ", "The letter's ready; isn't it?", "https://exmaple.org/teh", "teh@exmaple.org", "src/teh",
          "exmaple.teh", "teh2", "TEH", "getTeh", "teh()", "std::teh", "#teh", "--teh", "a=teh", "teh-teh",
          "run `git psuh orign main` now", "`2 teh wrod`", "``a ` teh``", "```\nteh wrod",
          "```\n`\nteh wrod\n```", "file_nmae", "Mrs Okafor and Anselm", "cafe naive", "\u00e9teh",
          "\u65e5\u672c\u8a9e", "\u0442\u0435\u0445", "qzxkvbnw", "vuqi", "lol thx btw",
          // names and words that only lie close to others
          "a codec, a struct", "restic", "metacity", "the toolkit's globals", "unshifted", "a perl program",
          // British
          "my favourite grey colour", "organised behaviour in the theatre", "she travelled to the centre",
          // layout and punctuation
          "one   two", "wait ... what", "and :) so", "a , b", "cd . and", "3 . 5", "one\n  two",
          "that that had had", "yes! \"no,\" he said", "this (i) and that", "for i = x",
          // no start of a sentence for certain
          "and so on.", "ask Mr. okay etc. and so, e.g. here", "as was his wont to do",
          // other languages
          "merci pour le dossier , je vous envoie les documents demain matin !",
          "ich habe das nicht gewusst und komme morgen wieder nach hause"})
        EXPECT_EQ(corrected(text), text);
}

// As any language is corrected of which only a dictionary is known.
TEST(DictionaryCorrector, CorrectsASlipWhereOnlyOneWordCanBeMeant) {
    quillmark::DictionaryCorrector corrector(quillmark::Dictionary::open("en_GB"));
    const std::pair<const char*, const char*> cases[] = {{"becuase", "because"},
                                                         {"occured", "occurred"},
                                                         {"untill", "until"},
                                                         {"yesteday", "yesterday"},
                                                         {"Yesterdya", "Yesterday"},
                                                         {"teh", "teh"},
                                                         {"wrod", "word"},
                                                         {"london", "london"},
                                                         {"Okafor", "Okafor"},
                                                         {"naïve", "naïve"},
                                                         {"", ""}};
    for (const auto& [word, expected] : cases)
        EXPECT_EQ(corrector.correct(word, true), expected);
    EXPECT_EQ(corrector.correct("becuase", false), "becuase");
}

} // namespace
