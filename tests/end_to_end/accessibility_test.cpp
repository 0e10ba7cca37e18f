// A desktop on which other programs' texts cannot be read, and then can.
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"
#include "testing/desktop/pasteboard_programs.h"

#include <gmock/gmock.h>

using namespace testbed;

namespace {

using flutter::EncodableMap;
using flutter::EncodableValue;

std::string outputOf(const std::vector<std::string>& command) {
    Process process(command);
    process.exitStatus();
    return process.output();
}

// A session's message bus, started and ended by the test.
struct SessionBus {
    void start() {
        // Without a display its accessibility bus does not become that of the programs around the test.
        daemon.emplace(std::vector<std::string>{"env", "-u", "DISPLAY", "dbus-daemon", "--session",
                                                "--nofork", "--address=" + address});
    }
    std::string ask(const std::vector<std::string>& method) {
        std::vector<std::string> command{"gdbus",         "call",          "--address",
                                         address,         "--dest",        "org.a11y.Bus",
                                         "--object-path", "/org/a11y/bus", "--method"};
        command.insert(command.end(), method.begin(), method.end());
        return outputOf(command);
    }
    std::string accessibilityAddress() {
        const std::string answer = ask({"org.a11y.Bus.GetAddress"}); // ('unix:…',)
        const auto first = answer.find('\'');
        return answer.substr(first + 1, answer.rfind('\'') - first - 1);
    }
    bool isEnabled() {
        return ask({"org.freedesktop.DBus.Properties.Get", "org.a11y.Status", "IsEnabled"}) == "(<true>,)\n";
    }

    TemporaryFolder folder;
    const std::string address = "unix:path=" + (folder / "bus").string();
    std::optional<Process> daemon;
};

EncodableValue capture(Desktop& desktop, Host& host) {
    desktop.keyboard.press("Alt+Shift+space");
    return host.nextCall("capture").value_or(EncodableValue());
}

TEST(Accessibility, ItsLackIsToldAndItIsUsedOnceItIsThere) {
    Desktop desktop;
    SessionBus session;
    Host host({{"DBUS_SESSION_BUS_ADDRESS", session.address}});
    const auto hostWindows = [&] { return desktop.windows(host.process().pid()); };
    host.bringToFront(desktop);
    EXPECT_THAT(host.process().output(), testing::HasSubstr("The session bus does not answer."));
    host.call("initialize", EncodableMap{});

    const pasteboard_test::Owner pasteboard({{"UTF8_STRING", "UTF8_STRING", 8, "on the pasteboard"}});
    {
        Fields fields(desktop, {"entry=one two three"});
        fields.command("select 0 4 7");
        const auto got = capture(desktop, host);
        EXPECT_EQ(textOf(got, "text"), "on the pasteboard");
        EXPECT_EQ(textOf(got, "source"), "clipboard");
        EXPECT_EQ(textOf(got, "token"), "");
    }
    ASSERT_TRUE(waitUntil([&] { return hostWindows().size() == 2; })) << "the person is not told";
    EXPECT_EQ(desktop.title(hostWindows().back()), "Quillmark");
    EXPECT_TRUE(waitUntil([&] { return desktop.activeWindow() == hostWindows().back(); }));
    desktop.close(hostWindows().back());
    EXPECT_TRUE(waitUntil([&] { return hostWindows().size() == 1; }));
    host.call("requestPermission");
    EXPECT_EQ(hostWindows().size(), 1U) << "the person is told once";

    session.start();
    ASSERT_TRUE(waitUntil([&] { return session.isEnabled(); })) << "programs are not told to show their text";
    Fields fields(desktop, {"entry=one two three"}, "Fields",
                  {{"DBUS_SESSION_BUS_ADDRESS", session.address},
                   {"AT_SPI_BUS_ADDRESS", session.accessibilityAddress()}});
    fields.command("select 0 4 7");
    const auto got = capture(desktop, host);
    EXPECT_EQ(textOf(got, "text"), "two");
    EXPECT_EQ(textOf(got, "source"), "selection");
    EXPECT_EQ(host.call("paste", EncodableMap{{"text", "2"}, {"token", textOf(got, "token")}}),
              flutter::CallOutcome("pasted"));
    fields.awaitText("one 2 three");
}

} // namespace
