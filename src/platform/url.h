#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// A parsed link or file location. A plain value.
class URL {
public:
    // Absent when the text does not parse as a URL.
    static std::optional<URL> URLWithString(std::string_view string);

    // A file's or directory's URL. A relative path starts from the working directory; an
    // empty one, or one with a zero byte, names nothing, and everything done with it fails.
    static URL fileURLWithPath(std::string_view path, bool isDirectory = false);

    const std::string& absoluteString() const;

    // The scheme as written, without the colon; absent when there is none.
    std::optional<std::string> scheme() const;

    // The file-system path of a file URL; empty otherwise.
    const std::string& path() const;

    // Marks the file or directory so that backup programs leave it out. Returns absent on success, else the
    // system's own sentence about what went wrong.
    std::optional<std::string> setExcludedFromBackup(bool excluded) const;

private:
    std::string string_;
    std::string path_;
};

} // namespace platform
