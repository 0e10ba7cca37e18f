#include "platform/url.h"

#include "platform/simulated/world.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace platform {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

// What may stand somewhere in a URL as it is (RFC 3986, 2); other languages' letters are let through (RFC
// 3987).
bool mayStand(char c) {
    static constexpr std::string_view marks = "-._~:/?#[]@!$&'()*+,;=%";
    return isLetter(c) || isDigit(c) || marks.find(c) != marks.npos || static_cast<unsigned char>(c) >= 0x80;
}

bool percentSignsAreEscapes(std::string_view string) {
    for (std::size_t i = 0; i < string.size(); ++i) {
        if (string[i] != '%') continue;
        if (i + 2 >= string.size() || !isHexDigit(string[i + 1]) || !isHexDigit(string[i + 2])) return false;
    }
    return true;
}

std::string escaped(std::string_view path) {
    static constexpr std::string_view hex = "0123456789ABCDEF";
    std::string result;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && mayStand(c) && std::string_view("?#[]%;").find(c) == std::string_view::npos) {
            result += c;
        } else {
            result += {'%', hex[byte >> 4], hex[byte & 15]};
        }
    }
    return result;
}

// Where the scheme's colon is, or npos: it comes before anything that can only stand in the rest.
std::size_t schemeEnd(std::string_view string) {
    const std::size_t end = string.find_first_of(":/?#");
    return end != string.npos && string[end] == ':' ? end : string.npos;
}

} // namespace

std::optional<URL> URL::URLWithString(std::string_view string) {
    if (string.empty() || !std::ranges::all_of(string, mayStand) || !percentSignsAreEscapes(string))
        return std::nullopt;
    if (const std::size_t end = schemeEnd(string); end != string.npos) {
        const std::string_view scheme = string.substr(0, end);
        const bool wellFormed =
            !scheme.empty() && isLetter(scheme.front()) && std::ranges::all_of(scheme, [](char c) {
                return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
            });
        if (!wellFormed) return std::nullopt;
    }
    URL url;
    url.string_ = string;
    return url;
}

URL URL::fileURLWithPath(std::string_view path, bool isDirectory) {
    URL url;
    url.path_ = std::filesystem::absolute(std::filesystem::path(path)).string();
    url.string_ = "file://" + escaped(url.path_);
    if (isDirectory && !url.string_.ends_with('/')) url.string_ += '/';
    return url;
}

const std::string& URL::absoluteString() const { return string_; }

std::optional<std::string> URL::scheme() const {
    const std::size_t end = schemeEnd(string_);
    if (end == std::string::npos) return std::nullopt;
    return string_.substr(0, end);
}

const std::string& URL::path() const { return path_; }

std::optional<std::string> URL::setExcludedFromBackup(bool excluded) const {
    simulated::World& world = simulated::World::current();
    if (world.backupFailure) return world.backupFailure;
    if (excluded)
        world.excludedFromBackup.insert(path_);
    else
        world.excludedFromBackup.erase(path_);
    return std::nullopt;
}

} // namespace platform
