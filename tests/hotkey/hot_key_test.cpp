// One combination at a time, and the old one back when the new one cannot be had.
#include "support/host.h"

#include <gmock/gmock.h>

using flutter::EncodableMap;
using simulated::Combination;
using simulated::JournalEntry;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint32_t optionShift = 0xA00;
constexpr std::uint32_t command = 0x100;

struct HotKeys : testing::Test, Host {
    std::string initialize(int keyCode) {
        return call("initialize", EncodableMap{{"hotkey", EncodableMap{{"keyCode", keyCode}}}}).text();
    }
    std::vector<Combination> live() const {
        std::vector<Combination> combinations;
        for (const auto& registration : world.hotKeys.registrations)
            combinations.push_back(registration.combination);
        EXPECT_EQ(world.hotKeys.handlers.size(), combinations.size()) << "no handler without a combination";
        return combinations;
    }
};

} // namespace

TEST_F(HotKeys, ReadTheCombinationFromTheInterface) {
    const std::pair<EncodableMap, Combination> cases[]{
        {{}, {49, optionShift}},
        {{{"keyCode", 40}}, {40, optionShift}},
        {{{"keyCode", 40.9}, {"command", true}, {"option", false}, {"shift", false}}, {40, command}},
        {{{"control", true}, {"option", "no"}, {"shift", nullptr}, {"keyCode", "40"}},
         {49, optionShift | 0x1000}},
        {{{"keyCode", -1}, {"command", 1}}, {0xFFFFFFFF, optionShift}},
    };
    for (const auto& [hotkey, combination] : cases) {
        EXPECT_EQ(call("initialize", EncodableMap{{"hotkey", hotkey}}).text(), "hotkey_registered=true");
        EXPECT_THAT(live(), ElementsAre(combination));
    }
    EXPECT_EQ(call("initialize", "no map").text(), "hotkey_registered=true");
    EXPECT_THAT(live(), ElementsAre(Combination{49, optionShift}));
    EXPECT_EQ(world.hotKeys.registrations[0].id.signature, 0x514D484Bu);
    EXPECT_EQ(world.hotKeys.registrations[0].id.id, 1u);
}

TEST_F(HotKeys, AreReplacedOneByOneAndLeftAloneWhenNothingChanges) {
    initialize(40);
    world.journal.clear();
    EXPECT_EQ(initialize(40), "hotkey_registered=true");
    EXPECT_THAT(world.journal.entriesThatBeginWith("hot key"), IsEmpty());
    EXPECT_EQ(initialize(41), "hotkey_registered=true");
    EXPECT_THAT(world.journal.entriesThatBeginWith("hot key"),
                ElementsAre(JournalEntry{{}, "hot key 40+2560 unregistered"},
                            JournalEntry{{}, "hot key handler removed"},
                            JournalEntry{{}, "hot key 41+2560 registered"}));
}

TEST_F(HotKeys, FallBackToTheOldCombinationWhenTheNewOneIsTaken) {
    initialize(40);
    world.hotKeys.taken.insert({41, optionShift});
    EXPECT_EQ(initialize(41), "hotkey_registered=false");
    EXPECT_THAT(live(), ElementsAre(Combination{40, optionShift}));

    world.hotKeys.acceptsHandlers = false;
    EXPECT_EQ(initialize(42), "hotkey_registered=false");
    EXPECT_THAT(live(), IsEmpty());
    world.hotKeys.acceptsHandlers = true;
    EXPECT_EQ(initialize(41), "hotkey_registered=false") << "nothing is left to fall back to";
    EXPECT_THAT(live(), IsEmpty());
    EXPECT_EQ(initialize(40), "hotkey_registered=true");
}

TEST_F(HotKeys, RunOneCaptureForEachPressUntilTheHostGoes) {
    world.bringToFront(world.openProgram());
    pressHotkey();
    pressHotkey();
    EXPECT_THAT(calledMethods(), ElementsAre("capture", "capture"));
    window.reset();
    EXPECT_THAT(live(), IsEmpty());
}
