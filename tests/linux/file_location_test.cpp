// Files and folders that the interface names: which one is meant, and how backup programs learn to leave it
// out.
#include "platform/url.h"
#include "testing/desktop/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/xattr.h>

#include <filesystem>
#include <fstream>

namespace platform {
namespace {

namespace fs = std::filesystem;

struct FileLocation : testing::Test {
    std::optional<std::string> exclude(const fs::path& path, bool excluded = true) const {
        return URL::fileURLWithPath(path.string(), true).setExcludedFromBackup(excluded);
    }

    std::string firstLineOfTag() const {
        std::string line;
        std::ifstream file(folder / "CACHEDIR.TAG");
        std::getline(file, line);
        return line;
    }

    const testbed::TemporaryFolder temporary;
    const fs::path folder = temporary / "";
};

TEST_F(FileLocation, MarkedDirectoryCarriesTheTagAndTheAttributeUntilUnmarked) {
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

TEST_F(FileLocation, OtherFileNamedLikeTheTagIsNotRemoved) {
    std::ofstream(folder / "CACHEDIR.TAG") << "mine";
    EXPECT_EQ(exclude(folder, false), std::nullopt);
    EXPECT_EQ(firstLineOfTag(), "mine");
}

TEST_F(FileLocation, FailureIsTheSystemsSentence) {
    EXPECT_THAT(exclude(folder / "missing").value_or(""), testing::HasSubstr("No such file or directory"));
    std::ofstream(folder / "file") << "x";
    EXPECT_THAT(exclude(folder / "file").value_or(""), testing::HasSubstr("Not a directory"));
    fs::create_directory(folder / "CACHEDIR.TAG");
    EXPECT_THAT(exclude(folder).value_or(""), testing::HasSubstr("Is a directory"));
    EXPECT_TRUE(exclude("")) << "must not mark the working directory";
}

TEST_F(FileLocation, LinksAndParentFoldersLeadWhereTheFileSystemSays) {
    fs::create_directories(folder / "here");
    fs::create_directories(folder / "there/deep");
    fs::create_symlink(folder / "there/deep", folder / "here/link");
    const std::string here = folder / "here", there = fs::canonical(folder / "there");
    const struct {
        std::string path, location;
    } cases[] = {
        {here + "/link/../f", "file://" + there + "/f"},
        {here + "/link/./f", "file://" + here + "/link/f"},
        {there + "/deep/..//deep/f", "file://" + there + "/deep/f"},
        {here + "/gone/../f", ""}, // without a location nothing opens it
        {"/../etc", "file:///etc"},
    };
    for (const auto& [path, location] : cases)
        EXPECT_EQ(URL::fileURLWithPath(path).absoluteString(), location) << path;
    EXPECT_EQ(exclude(here + "/link/.."), std::nullopt);
    EXPECT_TRUE(fs::exists(there + "/CACHEDIR.TAG"));
    EXPECT_THAT(exclude(here + "/gone/..").value_or(""), testing::HasSubstr("/gone/.."));
}

} // namespace
} // namespace platform
