// What a screen reader finds of the host.
#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/at_spi/object.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"

#include <gmock/gmock.h>

namespace platform::at_spi {
namespace {

Bus& bus() { return *AccessibilityBus::shared().bus(); }

// The names of everything in `object`, and the texts, as the screen readers' library walks through it: it
// asks for one child after the other. (The list of children leaves out an embedded view.)
void gather(const Object& object, std::vector<std::string>& into) {
    into.push_back(stringPropertyIn(bus().call(nameOf(object))).value_or(""));
    into.push_back(stringIn(bus().call({object.program, object.path, interfaces::text, "GetText", "(s)",
                                        arguments("(ii)", 0, -1)}))
                       .value_or(""));
    const auto count = intPropertyIn(bus().call(property(object, interfaces::accessible, "ChildCount")));
    for (int i = 0; i < count.value_or(0); ++i) {
        const auto reply = bus().call({object.program, object.path, interfaces::accessible, "GetChildAtIndex",
                                       "((so))", arguments("(i)", i)});
        const char *program = "", *path = "";
        if (reply.value) g_variant_get(reply.value.get(), "((&s&o))", &program, &path);
        if (*program != '\0') gather({program, path}, into);
    }
}

TEST(OwnElements, AreFoundByScreenReadersWithThoseOfTheView) {
    testbed::Desktop desktop;
    testbed::Host host;
    host.bringToFront(desktop);
    const testbed::Fields view(desktop, {"--into", host.view(), "entry=in the view"});
    std::vector<std::string> found;
    testbed::waitUntil([&] {
        found.clear();
        const auto programs = AccessibilityBus::shared().applications().of(bus(), host.process().pid());
        if (programs && !programs->empty()) gather(rootOf(programs->front()->name), found);
        return std::ranges::find(found, "in the view") != found.end();
    });
    EXPECT_THAT(found, testing::IsSupersetOf({"Edit", "Copy", "Minimize", "in the view"}));
}

} // namespace
} // namespace platform::at_spi
