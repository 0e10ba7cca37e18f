#include "linux/print_rect.h"
#include "platform/linux/window/frame_store.h"
#include "platform/linux/window/screen.h"
#include "testing/desktop/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace platform {
namespace {

namespace fs = std::filesystem;

struct FrameStore : testing::Test {
    FrameStore() { setenv("XDG_STATE_HOME", state.c_str(), 1); }
    ~FrameStore() override { unsetenv("XDG_STATE_HOME"); }

    const testbed::TemporaryFolder folder;
    const fs::path state = folder / "state";
};

TEST_F(FrameStore, FrameComesBackUnderItsNameOnly) {
    const Rect frame{-5, 12.5, 1040, 714};
    const WindowFrameStore store("Main/../window");
    EXPECT_EQ(store.load(), std::nullopt);
    store.save(frame);
    EXPECT_EQ(store.load(), frame);
    EXPECT_EQ(WindowFrameStore("Other").load(), std::nullopt);
    store.save({0, 0, 0, 100});
    EXPECT_EQ(store.load(), frame) << "what is no frame must not replace one";
}

TEST_F(FrameStore, BrokenFileIsIgnored) {
    fs::create_directories(state / "quillmark");
    for (const char* content :
         {"", "1 2 3", "a b c d", "1 2 nan 4", "1 2 inf 4", "1 2 -3 4", "1 2 0 4", "1e300 2 3 4"}) {
        std::ofstream(state / "quillmark" / "Main.frame") << content;
        EXPECT_EQ(WindowFrameStore("Main").load(), std::nullopt) << content;
    }
}

TEST_F(FrameStore, PlaceThatCannotBeWrittenIsNoError) {
    std::ofstream(state) << "a file where the folder should be";
    WindowFrameStore("Main").save({1, 2, 3, 4});
    EXPECT_EQ(WindowFrameStore("Main").load(), std::nullopt);
}

TEST(Fitted, FrameEndsUpInsideTheArea) {
    const Rect area{0, 50, 1000, 700};
    const struct {
        Rect frame;
        Rect result;
    } cases[] = {
        {{100, 100, 300, 200}, {100, 100, 300, 200}},
        {{-50, 0, 300, 200}, {0, 50, 300, 200}},
        {{900, 700, 300, 200}, {700, 550, 300, 200}},
        {{10, 10, 5000, 5000}, area},
    };
    for (const auto& [frame, result] : cases)
        EXPECT_EQ(fitted(frame, area), result);
}

} // namespace
} // namespace platform
