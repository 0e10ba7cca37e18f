// What a program tells of itself while somebody listens, as it arrives from a real GTK program.
#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/at_spi/events.h"
#include "platform/linux/at_spi/focus.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"

#include <gmock/gmock.h>

#include <csignal>

namespace platform::at_spi {
namespace {

using Kind = Event::Kind;
using testing::Contains;
using testing::Field;
using testing::IsEmpty;
using testing::Optional;

struct AtSpiEvents : testing::Test {
    void SetUp() override {
        accessibility.keepListening();
        bus = accessibility.bus();
        ASSERT_TRUE(bus) << accessibility.whyNot();
        const auto found = accessibility.applications().of(*bus, fields.process().pid());
        ASSERT_TRUE(found && found->size() == 1);
        program = found->front();
        const auto focus = focusedElement(*bus, *program, nullptr);
        ASSERT_TRUE(focus);
        field = focus->object;
    }

    testbed::Desktop desktop;
    testbed::Fields fields{desktop, {"entry=one two three", "entry=other"}};
    AccessibilityBus& accessibility = AccessibilityBus::shared();
    Bus* bus = nullptr;
    Application* program = nullptr;
    Object field;
};

TEST_F(AtSpiEvents, TellWhatHasHappenedToWhichObjectOnce) {
    Events events(*bus, program->name);
    EXPECT_THAT(events.take(*bus), Optional(IsEmpty()));
    const std::pair<const char*, Kind> cases[]{{"select 0 4 7", Kind::selectionChanged},
                                               {"select 0 5 5", Kind::caretMoved},
                                               {"text 0 new", Kind::textRemoved},
                                               {"text 0 newer", Kind::textInserted}};
    for (const auto& [command, kind] : cases) {
        fields.command(command);
        const auto heard = events.take(*bus);
        ASSERT_TRUE(heard);
        EXPECT_THAT(*heard, Contains(testing::AllOf(Field(&Event::kind, kind), Field(&Event::source, field))))
            << command;
        EXPECT_THAT(events.take(*bus), Optional(IsEmpty()));
    }
    fields.command("focus 1");
    const auto heard = events.take(*bus);
    ASSERT_TRUE(heard);
    EXPECT_THAT(*heard, Contains(testing::AllOf(Field(&Event::kind, Kind::focusGained),
                                                Field(&Event::source, testing::Ne(field)))));
}

TEST_F(AtSpiEvents, AreOfOneProgramOnlyAndAbsentOnceItIsSilent) {
    Events events(*bus, program->name);
    testbed::Fields other(desktop, {"entry=other"});
    other.command("text 0 new");
    const auto heard = events.take(*bus);
    ASSERT_TRUE(heard);
    EXPECT_THAT(*heard, testing::Each(testing::Not(Field(&Event::kind, Kind::textInserted))));
    fields.process().signal(SIGSTOP);
    EXPECT_FALSE(events.take(*bus));
    fields.process().signal(SIGCONT);
}

} // namespace
} // namespace platform::at_spi
