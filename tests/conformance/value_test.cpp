// Identifiers, links and file locations.
#include "conformance/stage.h"
#include "platform/url.h"
#include "platform/uuid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace conformance {
namespace {

using namespace platform;

struct ValueTest : testing::Test, Stage {};

TEST_F(ValueTest, IdentifiersAreRandomUUIDsInTheirTextForm) {
    const auto hasTheForm =
        testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string uuid = UUIDString();
        EXPECT_THAT(uuid, hasTheForm);
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 1000u);
}

TEST_F(ValueTest, LinksShowTheirSchemeAndEncodeWhatMayNotStandInThem) {
    const struct {
        std::string_view text, scheme, absolute;
    } cases[] = {
        {"https://anna@example.org:80/a?b=c#d", "https", "https://anna@example.org:80/a?b=c#d"},
        {"HTTPS://EXAMPLE.ORG", "HTTPS", "HTTPS://EXAMPLE.ORG"},
        {"mailto:anna@example.org?subject=a b", "mailto", "mailto:anna@example.org?subject=a%20b"},
        {"custom+x-1.0:thing", "custom+x-1.0", "custom+x-1.0:thing"},
        {"https://[::1]:8080/", "https", "https://[::1]:8080/"},
        {"1https://example.org", "", "1https://example.org"},
        {"//example.org", "", "//example.org"},
        {"a/b:c", "", "a/b:c"},
    };
    for (const auto& [text, scheme, absolute] : cases) {
        const auto url = URL::URLWithString(text);
        ASSERT_TRUE(url.has_value()) << text;
        EXPECT_EQ(url->scheme().value_or(""), scheme);
        EXPECT_EQ(url->absoluteString(), absolute);
    }
}

TEST_F(ValueTest, WhatIsNoLinkDoesNotParse) {
    using namespace std::string_view_literals;
    for (const auto text : {""sv, "https://example.org:port/"sv, "https://[::1"sv, "https://a%zz"sv,
                            "https://a%2"sv, "https://exa mple.org"sv, "https://a\nb"sv, "a\0b"sv, "\xff"sv})
        EXPECT_FALSE(URL::URLWithString(text).has_value()) << text;
}

TEST_F(ValueTest, FilesHaveAPathAndALocation) {
    const URL file = URL::fileURLWithPath("/tmp/a b/ü?#%.txt");
    EXPECT_EQ(file.path(), "/tmp/a b/ü?#%.txt");
    EXPECT_EQ(file.absoluteString(), "file:///tmp/a%20b/%C3%BC%3F%23%25.txt");
    EXPECT_EQ(file.scheme(), "file");
    EXPECT_EQ(URL::URLWithString(file.absoluteString())->path(), file.path());
    EXPECT_EQ(URL::fileURLWithPath("/tmp", true).absoluteString(), "file:///tmp/");
    EXPECT_EQ(URL::fileURLWithPath("x").path(), (std::filesystem::current_path() / "x").string());
    EXPECT_EQ(URL::fileURLWithPath(std::string_view("/tmp\0/x", 7)).path(), "") << "must not name /tmp";
    EXPECT_EQ(URL::fileURLWithPath("").path(), "") << "must not name the working directory";
}

} // namespace
} // namespace conformance
