#include "platform/linux/start_up.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <map>

namespace platform {
namespace {

// Environment variables for as long as a test needs them; null unsets one.
class Environment {
public:
    explicit Environment(const std::map<const char*, const char*>& variables) {
        for (const auto& [name, value] : variables) {
            const char* former = std::getenv(name);
            former_.emplace(name, former ? former : "");
            value ? setenv(name, value, 1) : unsetenv(name);
        }
    }
    ~Environment() {
        for (const auto& [name, value] : former_)
            value.empty() ? unsetenv(name) : setenv(name, value.c_str(), 1);
    }

private:
    std::map<const char*, std::string> former_;
};

TEST(StartUp, SessionWithoutAnXServerIsToldApart) {
    const struct {
        const char* display;
        const char* wayland;
        const char* session;
        const char* sentence;
    } cases[] = {
        {nullptr, nullptr, nullptr, "there is no display"},
        {"", nullptr, "x11", "there is no display"},
        {nullptr, "wayland-0", nullptr, "Wayland"},
        {nullptr, nullptr, "wayland", "Wayland"},
        {"nonsense", "wayland-0", "wayland", "nonsense cannot be opened"},
    };
    for (const auto& [display, wayland, session, sentence] : cases) {
        const Environment environment(
            {{"DISPLAY", display}, {"WAYLAND_DISPLAY", wayland}, {"XDG_SESSION_TYPE", session}});
        EXPECT_THAT(displayProblem().value_or(""), testing::HasSubstr(sentence));
    }
}

} // namespace
} // namespace platform
