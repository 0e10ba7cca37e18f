#include "platform/url.h"

#include "platform/simulated/world.h"

#include <algorithm>
#include <filesystem>

namespace platform {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

// They may not stand in a URL, but people type them into one.
constexpr std::string_view unsafe = " \"<>\\^`{|}";
constexpr std::string_view hex = "0123456789ABCDEF";

std::string percentEncoded(std::string_view text, bool (*stands)(char)) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (stands(c))
            result += c;
        else
            result += {'%', hex[byte >> 4], hex[byte & 15]};
    }
    return result;
}

// A control character, or a byte that no UTF-8 text has.
bool isImpossible(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || byte == 0xC0 || byte == 0xC1 || byte > 0xF4;
}

bool percentSignsAreEscapes(std::string_view string) {
    for (std::size_t i = 0; i < string.size(); ++i) {
        if (string[i] != '%') continue;
        if (i + 2 >= string.size() || !isHexDigit(string[i + 1]) || !isHexDigit(string[i + 2])) return false;
    }
    return true;
}

// How long the scheme is; 0 when there is none.
std::size_t schemeLength(std::string_view string) {
    const std::size_t end = string.find_first_of(":/?#");
    if (end == string.npos || string[end] != ':' || end == 0 || !isLetter(string.front())) return 0;
    const bool wellFormed = std::ranges::all_of(string.substr(0, end), [](char c) {
        return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
    });
    return wellFormed ? end : 0;
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i];
            continue;
        }
        result += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
        i += 2;
    }
    return result;
}

// A host has none of the unsafe characters in its name, encoded or not; in brackets it has both; a port is a
// number.
bool authorityIsSound(std::string_view string) {
    const std::size_t start = string.find("//");
    const std::size_t length = schemeLength(string);
    if (start != (length == 0 ? 0 : length + 1)) return true;
    std::string_view authority = string.substr(start + 2);
    authority = authority.substr(0, authority.find_first_of("/?#"));
    if (percentDecoded(authority).find_first_of(unsafe) != std::string::npos) return false;
    const std::size_t bracket = authority.rfind(']');
    if (authority.find('[') != authority.npos && bracket == authority.npos) return false;
    const std::size_t colon =
        authority.find(':', bracket == authority.npos ? authority.find('@') + 1 : bracket);
    return colon == authority.npos || std::ranges::all_of(authority.substr(colon + 1), isDigit);
}

} // namespace

std::optional<URL> URL::URLWithString(std::string_view string) {
    if (string.empty() || std::ranges::any_of(string, isImpossible)) return std::nullopt;
    URL url;
    url.string_ = percentEncoded(string, [](char c) { return unsafe.find(c) == unsafe.npos; });
    if (!percentSignsAreEscapes(url.string_) || !authorityIsSound(url.string_)) return std::nullopt;
    if (url.string_.starts_with("file:///")) url.path_ = percentDecoded(url.string_.substr(7));
    return url;
}

// A path with a zero byte in it names no file.
URL URL::fileURLWithPath(std::string_view path, bool isDirectory) {
    URL url;
    if (path.empty() || path.find('\0') != path.npos) return url;
    url.path_ = std::filesystem::absolute(path).lexically_normal().string();
    if (isDirectory && !url.path_.ends_with('/')) url.path_ += '/';
    url.string_ = "file://" + percentEncoded(url.path_, [](char c) {
                      return isLetter(c) || isDigit(c) ||
                             std::string_view("-._~/!$&'()*+,=:@").find(c) != std::string_view::npos;
                  });
    return url;
}

const std::string& URL::absoluteString() const { return string_; }

std::optional<std::string> URL::scheme() const {
    const std::size_t length = schemeLength(string_);
    return length != 0 ? std::optional(string_.substr(0, length)) : std::nullopt;
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
