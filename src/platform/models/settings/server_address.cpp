#include "platform/models/settings/server_address.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <charconv>
#include <system_error>

namespace platform {
namespace {

constexpr std::uint16_t httpPort = 80, httpsPort = 443;

std::optional<std::uint16_t> portIn(std::string_view digits) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (error != std::errc() || end != digits.data() + digits.size() || port == 0) return std::nullopt;
    return port;
}

// What an HTTP client and a person read alike: no blanks, no user name, nothing that must be escaped.
bool isPlain(std::string_view text, std::string_view marks) {
    return std::ranges::all_of(text, [&](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               marks.find(c) != std::string_view::npos;
    });
}

// Numeric; a zone may follow: "fe80::1%eth0".
bool isIpv6(std::string_view host) {
    in6_addr address{};
    return inet_pton(AF_INET6, std::string(host.substr(0, host.find('%'))).c_str(), &address) == 1;
}

// "host", "host:port", ":port", "[::1]:port".
bool readAuthority(std::string_view text, ServerAddress& address) {
    const bool bracketed = text.starts_with('[');
    const std::size_t hostEnd = bracketed ? text.find(']') : std::min(text.find(':'), text.size());
    if (hostEnd == std::string_view::npos) return false;
    const auto host = bracketed ? text.substr(1, hostEnd - 1) : text.substr(0, hostEnd);
    const auto rest = text.substr(hostEnd + (bracketed ? 1 : 0));
    if (!isPlain(host, bracketed ? ".:%" : ".-_") || (bracketed && !isIpv6(host))) return false;
    if (!rest.empty()) {
        const auto port = rest.front() == ':' ? portIn(rest.substr(1)) : std::nullopt;
        if (!port) return false;
        address.port = *port;
    }
    // A server that listens on every address is reached on this computer's own.
    if (!host.empty() && host != "0.0.0.0" && host != "::") address.host = host;
    return !text.empty();
}

} // namespace

std::string ServerAddress::shown() const {
    const bool bracketed = host.find(':') != std::string::npos;
    return (bracketed ? '[' + host + ']' : host) + ':' + std::to_string(port);
}

std::string ServerAddress::origin() const { return (encrypted ? "https://" : "http://") + shown(); }

// "127.example.com" is a name.
bool ServerAddress::isOnThisComputer() const {
    in_addr address{};
    if (inet_pton(AF_INET, host.c_str(), &address) == 1)
        return ntohl(address.s_addr) >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET;
    return host == "localhost" || host == "::1";
}

std::optional<ServerAddress> readServerAddress(std::string_view text, std::uint16_t defaultPort) {
    ServerAddress address;
    const std::size_t schemeEnd = text.find("://");
    const auto scheme = schemeEnd == std::string_view::npos ? "http" : text.substr(0, schemeEnd);
    if (scheme != "http" && scheme != "https") return std::nullopt;
    if (schemeEnd != std::string_view::npos) text.remove_prefix(schemeEnd + 3);
    address.encrypted = scheme == "https";
    address.port = defaultPort != 0 ? defaultPort : address.encrypted ? httpsPort : httpPort;

    const std::size_t slash = std::min(text.find('/'), text.size());
    auto path = text.substr(slash);
    while (path.ends_with('/'))
        path.remove_suffix(1);
    if (!readAuthority(text.substr(0, slash), address) || !isPlain(path, "/._-~")) return std::nullopt;
    if (!path.empty()) address.path = path;
    return address;
}

} // namespace platform
