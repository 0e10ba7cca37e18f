// What Qt programs tell while an input method is on, as 5.15 and 6.4 do in a text of several paragraphs.
#include "platform/linux/at_spi/put_back.h"

#include <gmock/gmock.h>

namespace platform::at_spi {
namespace {

using Kind = Event::Kind;

const Object here{":1.7", "/field"}, elsewhere{":1.7", "/other"};

Event removed(int position, int length, const Object& source = here) {
    return {Kind::textRemoved, source, position, length};
}
Event inserted(int position, int length, const char* text) {
    return {Kind::textInserted, here, position, length, text};
}

TEST(PutBack, IsOnlyWhatStandsThereAgain) {
    const char* text = "🐶 one\ntwo\ntwo!";
    const struct {
        const char* what;
        std::vector<Event> events;
        std::size_t left;
    } cases[]{{"a paragraph", {removed(0, 7), inserted(0, 7, "🐶 one\u2029")}, 0},
              {"the last paragraph, with its end", {removed(11, 5), inserted(11, 4, "two!")}, 0},
              {"both, one after the other",
               {removed(7, 4), inserted(7, 4, "two\u2029"), removed(11, 5), inserted(11, 4, "two!")},
               0},
              {"the end of an empty last paragraph", {removed(15, 1)}, 0},
              {"another text", {removed(7, 4), inserted(7, 4, "tow\u2029")}, 2},
              {"the text of another paragraph", {removed(11, 4), inserted(11, 3, "two")}, 2},
              {"less than was removed", {removed(7, 4), inserted(7, 3, "two")}, 2},
              {"more than was removed", {removed(7, 3), inserted(7, 4, "two\u2029")}, 2},
              {"at another place", {removed(7, 4), inserted(11, 4, "two\u2029")}, 2},
              {"from another field", {removed(7, 4, elsewhere), inserted(7, 4, "two\u2029")}, 2},
              {"a character", {removed(14, 1)}, 1},
              {"a text that the program does not tell", {removed(7, 4), inserted(7, 4, "")}, 2},
              {"something between", {removed(7, 4), removed(7, 1), inserted(7, 4, "two\u2029")}, 3}};
    for (const auto& [what, events, left] : cases)
        EXPECT_EQ(withoutPutBack(events, text).size(), left) << what;
    EXPECT_EQ(withoutPutBack({removed(0, 1)}, "").size(), 1U) << "of a text that is not known";
}

} // namespace
} // namespace platform::at_spi
