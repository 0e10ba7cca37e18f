// Identifiers, links and file locations.
#include "conformance/stage.h"
#include "platform/url.h"
#include "platform/uuid.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace conformance {
namespace {

using namespace platform;

struct ValueTest : testing::Test {
    Stage stage;
};

TEST_F(ValueTest, IdentifiersAreRandomUUIDsInTheirTextForm) {
    const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string uuid = UUIDString();
        EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 1000u);
}

TEST_F(ValueTest, LinksShowTheirSchemeAndNonsenseDoesNotParse) {
    struct Case {
        const char* text;
        const char* scheme; // null: it does not parse; empty: it has none
    };
    for (const Case& c : {Case{"https://example.org/a?b=c#d", "https"}, Case{"HTTPS://EXAMPLE.ORG", "HTTPS"},
                          Case{"mailto:anna@example.org?subject=Hi%20there", "mailto"},
                          Case{"custom+x-1.0:thing", "custom+x-1.0"}, Case{"relative/path", ""},
                          Case{"//example.org/path", ""}, Case{"a/b:c", ""}, Case{"", nullptr}}) {
        const auto url = URL::URLWithString(c.text);
        ASSERT_EQ(url.has_value(), c.scheme != nullptr) << c.text;
        if (!url) continue;
        EXPECT_EQ(url->scheme().value_or(""), c.scheme) << c.text;
        EXPECT_EQ(url->absoluteString(), c.text);
        EXPECT_EQ(url->path(), "");
    }
}

TEST_F(ValueTest, FilesHaveAPathAndAnEscapedLocation) {
    const URL file = URL::fileURLWithPath("/tmp/a b/ü?#%.txt");
    EXPECT_EQ(file.path(), "/tmp/a b/ü?#%.txt");
    EXPECT_EQ(file.absoluteString(), "file:///tmp/a%20b/%C3%BC%3F%23%25.txt");
    EXPECT_EQ(file.scheme(), "file");
    EXPECT_EQ(URL::fileURLWithPath("/tmp", true).absoluteString(), "file:///tmp/");
}

} // namespace
} // namespace conformance
