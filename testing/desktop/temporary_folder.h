// A folder that goes with its object.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace testbed {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

// Empty when there is no such file.
std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, std::string_view text);

} // namespace testbed
