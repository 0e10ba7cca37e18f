// Directories that backup programs leave out, checked by what those programs look for.
#include "platform/url.h"
#include "testing/desktop/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/xattr.h>

#include <filesystem>
#include <fstream>

namespace platform {
namespace {

namespace fs = std::filesystem;

struct Backup : testing::Test {
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

TEST_F(Backup, OtherFileNamedLikeTheTagIsNotRemoved) {
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
    EXPECT_TRUE(exclude("")) << "must not mark the working directory";
}

} // namespace
} // namespace platform
