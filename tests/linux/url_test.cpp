#include "platform/url.h"
#include "platform/uuid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

namespace platform {
namespace {

namespace fs = std::filesystem;

TEST(URL, SchemeIsReadAsWritten) {
    const struct {
        std::string_view text;
        std::optional<std::string> scheme;
        std::string_view absolute;
    } cases[] = {
        {"https://example.com/a?b#c", "https", "https://example.com/a?b#c"},
        {"HTTPS://example.com", "HTTPS", "HTTPS://example.com"},
        {"mailto:a@b.c?subject=Hello there", "mailto", "mailto:a@b.c?subject=Hello%20there"},
        {"example.com/page", std::nullopt, "example.com/page"},
        {"1https://example.com", std::nullopt, "1https://example.com"},
    };
    for (const auto& [text, scheme, absolute] : cases) {
        const auto url = URL::URLWithString(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->scheme(), scheme) << text;
        EXPECT_EQ(url->absoluteString(), absolute);
    }
}

TEST(URL, TextThatIsNoURLIsAbsent) {
    using namespace std::string_view_literals;
    for (const std::string_view text : {""sv, "https://example.com:port/"sv, "https://[::1"sv,
                                        "https://a%zz"sv, "https://a\nb"sv, "a\0b"sv, "\xff"sv}) {
        EXPECT_FALSE(URL::URLWithString(text)) << text;
    }
}

TEST(URL, PathBecomesAFileURLAndBack) {
    const auto url = URL::fileURLWithPath("/tmp/a b/ü%20");
    EXPECT_EQ(url.absoluteString(), "file:///tmp/a%20b/%C3%BC%2520");
    EXPECT_EQ(url.path(), "/tmp/a b/ü%20");
    EXPECT_EQ(URL::URLWithString(url.absoluteString())->path(), url.path());
    EXPECT_EQ(URL::fileURLWithPath("x").path(), fs::current_path() / "x");
    EXPECT_EQ(URL::fileURLWithPath("/tmp/x", true).absoluteString(), "file:///tmp/x/");
    EXPECT_EQ(URL::fileURLWithPath(std::string_view("/tmp\0/x", 7)).path(), "") << "must not name /tmp";
    EXPECT_EQ(URL::fileURLWithPath("").path(), "") << "must not name the working directory";
    EXPECT_TRUE(URL::fileURLWithPath("", true).setExcludedFromBackup(true));
}

class Backup : public testing::Test {
protected:
    Backup() { fs::create_directory(folder); }
    ~Backup() override {
        fs::permissions(folder, fs::perms::owner_all);
        fs::remove_all(folder);
    }

    std::optional<std::string> exclude(const fs::path& path, bool excluded = true) const {
        return URL::fileURLWithPath(path.string(), true).setExcludedFromBackup(excluded);
    }

    std::string firstLineOfTag() const {
        std::string line;
        std::ifstream file(folder / "CACHEDIR.TAG");
        std::getline(file, line);
        return line;
    }

    const fs::path folder = fs::temp_directory_path() / ("quillmark-test-" + UUIDString());
};

TEST_F(Backup, MarkedDirectoryCarriesTheTagAndTheAttributeUntilUnmarked) {
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_EQ(exclude(folder), std::nullopt);
        EXPECT_EQ(firstLineOfTag(), "Signature: 8a477f597d28d172789f06886806bc55");
    }
    char value[8]{};
    if (getxattr(folder.c_str(), "user.xdg.robots.backup", value, sizeof value) >= 0) {
        EXPECT_STREQ(value, "false");
    }
    EXPECT_EQ(exclude(folder, false), std::nullopt);
    EXPECT_TRUE(fs::is_empty(folder));
    EXPECT_LT(getxattr(folder.c_str(), "user.xdg.robots.backup", value, sizeof value), 0);
}

TEST_F(Backup, TagThatIsSomeoneElsesFileIsNotRemoved) {
    std::ofstream(folder / "CACHEDIR.TAG") << "mine";
    EXPECT_EQ(exclude(folder, false), std::nullopt);
    EXPECT_EQ(firstLineOfTag(), "mine");
}

TEST_F(Backup, FailureIsTheSystemsSentence) {
    EXPECT_THAT(exclude(folder / "missing").value_or(""), testing::HasSubstr("No such file or directory"));
    std::ofstream(folder / "file") << "x";
    EXPECT_THAT(exclude(folder / "file").value_or(""), testing::HasSubstr("Not a directory"));
    fs::create_directory(folder / "CACHEDIR.TAG");
    EXPECT_THAT(exclude(folder).value_or(""), testing::HasSubstr("Is a directory"));
}

TEST(UUIDString, IsARandomVersion4UUIDInCapitals) {
    const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    std::set<std::string> all;
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(std::regex_match(*all.insert(UUIDString()).first, form));
    }
    EXPECT_EQ(all.size(), 1000);
}

} // namespace
} // namespace platform
