#include "platform/url.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/system/backup_mark.h"

#include <gio/gio.h>

#include <algorithm>
#include <filesystem>

namespace platform {
namespace {

using Text = Handle<char, g_free>;

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

constexpr std::string_view unsafe = " \"<>\\^`{|}";

// Percent-encodes the characters that a URL may not hold but that people type into one.
std::string encoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char character : text) {
        if (unsafe.find(character) == std::string_view::npos) {
            result += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            result += {'%', digits[byte >> 4], digits[byte & 0x0F]};
        }
    }
    return result;
}

// Accepts a relative reference too, which is a URL without a scheme. The name of a host never holds one of
// the unsafe characters, encoded or not.
bool parses(const std::string& text) {
    char* host = nullptr;
    const bool split = g_utf8_validate(text.c_str(), -1, nullptr) != 0 &&
                       g_uri_split(text.c_str(), G_URI_FLAGS_NONE, nullptr, nullptr, &host, nullptr, nullptr,
                                   nullptr, nullptr, nullptr) != 0;
    const Text owned{host};
    return split &&
           (host == nullptr || std::string_view(host).find_first_of(unsafe) == std::string_view::npos);
}

} // namespace

std::optional<URL> URL::URLWithString(std::string_view string) {
    if (string.empty() || std::any_of(string.begin(), string.end(), isControl)) return std::nullopt;
    URL url;
    url.string_ = encoded(string);
    if (!parses(url.string_)) return std::nullopt;
    if (const Text path{g_filename_from_uri(url.string_.c_str(), nullptr, nullptr)}) url.path_ = path.get();
    return url;
}

URL URL::fileURLWithPath(std::string_view path, bool isDirectory) {
    URL url;
    // No name is no file, least of all the working directory; and a name with a zero byte in it, cut there,
    // would name another file.
    if (path.empty() || path.find('\0') != std::string_view::npos) return url;
    std::error_code unreadable;
    url.path_ = std::filesystem::absolute(path, unreadable).lexically_normal().string();
    if (isDirectory && !url.path_.ends_with('/')) url.path_ += '/';
    if (const Text uri{g_filename_to_uri(url.path_.c_str(), nullptr, nullptr)}) url.string_ = uri.get();
    return url;
}

const std::string& URL::absoluteString() const { return string_; }

std::optional<std::string> URL::scheme() const {
    if (const Text scheme{g_uri_parse_scheme(string_.c_str())}) return string_.substr(0, string_.find(':'));
    return std::nullopt;
}

const std::string& URL::path() const { return path_; }

std::optional<std::string> URL::setExcludedFromBackup(bool excluded) const {
    return markExcludedFromBackup(path_, excluded);
}

} // namespace platform
