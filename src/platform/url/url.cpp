#include "platform/url.h"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace platform {
namespace {

struct Free {
    void operator()(char* text) const { g_free(text); }
};
using Text = std::unique_ptr<char, Free>;

// Characters that may not stand in a URL but that people type into one: they are percent-encoded. Everything
// else that is printable may stand in one.
constexpr std::string_view unsafe = " \"<>\\^`{|}";
constexpr const char* reserved = "!#$%&'()*+,/:;=?@[]";

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

bool isPrintable(std::string_view text) {
    return std::ranges::none_of(text, isControl) &&
           g_utf8_validate_len(text.data(), text.size(), nullptr) != FALSE;
}

// Relative references parse too; they have no scheme. GLib accepts an encoded unsafe character in a host's
// name, but no host has such a name.
bool parses(const std::string& text) {
    char* host = nullptr;
    const bool split = g_uri_split(text.c_str(), G_URI_FLAGS_NONE, nullptr, nullptr, &host, nullptr, nullptr,
                                   nullptr, nullptr, nullptr) != FALSE;
    const Text owned{host};
    return split && (!host || std::string_view(host).find_first_of(unsafe) == std::string_view::npos);
}

// The path as the file system understands it: ".." after a link to a folder leads to the parent of the folder
// that the link names, not back to where the link is. Links after the last ".." stay as they are. Empty when
// a folder before a ".." does not exist.
std::filesystem::path withoutParents(const std::filesystem::path& path) {
    std::filesystem::path resolved, rest;
    for (const auto& part : path) {
        rest /= part;
        if (part != "..") continue;
        std::error_code missing;
        resolved = std::filesystem::canonical(resolved / rest, missing);
        if (missing) return {};
        rest.clear();
    }
    return (resolved / rest).lexically_normal();
}

} // namespace

std::optional<URL> URL::URLWithString(std::string_view string) {
    if (string.empty() || !isPrintable(string)) return std::nullopt;
    URL url;
    url.string_ = Text{g_uri_escape_string(std::string(string).c_str(), reserved, TRUE)}.get();
    if (!parses(url.string_)) return std::nullopt;
    if (const Text path{g_filename_from_uri(url.string_.c_str(), nullptr, nullptr)}) url.path_ = path.get();
    return url;
}

URL URL::fileURLWithPath(std::string_view path, bool isDirectory) {
    URL url;
    // Neither may name another file than it says: an empty path the working directory, a path with a zero
    // byte what stands before that byte.
    if (path.empty() || path.find('\0') != std::string_view::npos) return url;
    std::error_code unreadable;
    const auto absolute = std::filesystem::absolute(path, unreadable);
    const auto resolved = withoutParents(absolute);
    // A path that leads nowhere is kept for what is said about it, but has no location that could be opened.
    url.path_ = (resolved.empty() ? absolute : resolved).string();
    if (isDirectory && !url.path_.ends_with('/')) url.path_ += '/';
    if (resolved.empty()) return url;
    if (const Text uri{g_filename_to_uri(url.path_.c_str(), nullptr, nullptr)}) url.string_ = uri.get();
    return url;
}

const std::string& URL::absoluteString() const { return string_; }

std::optional<std::string> URL::scheme() const {
    if (const Text scheme{g_uri_parse_scheme(string_.c_str())}) return string_.substr(0, string_.find(':'));
    return std::nullopt;
}

const std::string& URL::path() const { return path_; }

} // namespace platform
