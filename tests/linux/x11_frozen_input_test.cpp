#include "linux/front_key_window.h"
#include "platform/linux/x11/keyboard/frozen_input.h"
#include "testing/desktop/keyboard.h"

namespace platform {
namespace {

TEST(FrozenInput, ProgramsGetLaterAndInOrderWhatIsTypedMeanwhile) {
    constexpr std::chrono::milliseconds frozen(200);
    constexpr std::chrono::milliseconds precision(20); // the server's clock counts in steps of up to 20 ms
    FrontKeyWindow window;
    testbed::Keyboard keyboard;
    const auto start = testbed::Clock::now();
    x11::FrozenInput input;
    input.begin(frozen);
    input.awaitBegun();
    keyboard.press("a");
    keyboard.press("b");
    ASSERT_TRUE(testbed::waitUntil([&] { return window.presses().size() == 2; }));
    EXPECT_GE(testbed::Clock::now() - start, frozen - precision);
    {
        x11::FrozenInput another;
        another.begin(std::chrono::hours(1));
        another.awaitBegun();
        keyboard.press("c");
        EXPECT_EQ(window.presses().size(), 2u);
    }
    ASSERT_TRUE(testbed::waitUntil([&] { return window.presses().size() == 3; }));
    EXPECT_THAT(window.presses(), testing::ElementsAre("a", "b", "c"));
}

} // namespace
} // namespace platform
