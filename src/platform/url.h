#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// A parsed link or file location. A plain value.
class URL {
public:
    // Absent when the text does not parse as a URL. Characters that may not stand in one, such as a space,
    // are percent-encoded.
    static std::optional<URL> URLWithString(std::string_view string);

    // The URL of a file or directory. A relative path starts from the working directory. An empty path and
    // one with a zero byte name nothing: opening or marking such a URL fails.
    static URL fileURLWithPath(std::string_view path, bool isDirectory = false);

    const std::string& absoluteString() const;

    // The scheme as written, without the colon; absent when there is none.
    std::optional<std::string> scheme() const;

    // The file-system path of a file URL; empty otherwise.
    const std::string& path() const;

    // Marks the file or directory so that backup programs leave it out, or removes the mark. Absent on
    // success, else the system's sentence about what failed.
    std::optional<std::string> setExcludedFromBackup(bool excluded) const;

private:
    std::string string_;
    std::string path_;
};

} // namespace platform
