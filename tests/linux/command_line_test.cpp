#include "platform/linux/application/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform {
namespace {

TEST(CommandLine, OptionsEndWhereTheInterfaceBegins) {
    using Wish = CommandLine::Wish;
    const struct {
        std::vector<std::string> arguments;
        Wish wish;
        std::vector<std::string> interface;
    } cases[] = {
        {{}, Wish::run, {}},
        {{"--help"}, Wish::help, {}},
        {{"--version", "x"}, Wish::version, {"x"}},
        {{"--background", "--sm-client-id", "--x", "y"}, Wish::run, {"y"}},
        {{"x", "--help", "--version"}, Wish::run, {"x", "--help", "--version"}},
        {{"--", "--help"}, Wish::run, {"--help"}},
        {{"--trace=text", "x"}, Wish::run, {"x"}},
        {{"--trace=all", "x"}, Wish::unclear, {}},
        {{"--nonsense", "x"}, Wish::unclear, {}},
        {{"-"}, Wish::unclear, {}},
    };
    for (const auto& [arguments, wish, interface] : cases) {
        const auto line = readCommandLine(arguments);
        EXPECT_EQ(line.wish, wish);
        EXPECT_EQ(line.interface, interface);
        EXPECT_EQ(line.problem.empty(), wish != Wish::unclear);
    }
}

} // namespace
} // namespace platform
