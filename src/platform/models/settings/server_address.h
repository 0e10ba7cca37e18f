#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Where a model server is. A plain value.
struct ServerAddress {
    bool encrypted = false; // https
    std::string host =
        "localhost"; // a name or a numeric address; "localhost" stands for both loopback addresses
    std::uint16_t port = 0;
    std::string path = "/v1"; // what stands before "/chat/completions"

    bool operator==(const ServerAddress&) const = default;

    // "localhost:8080", as a sentence names it.
    std::string shown() const;
    // "http://localhost:8080/v1", as one writes it down.
    std::string url() const { return origin() + path; }
    // The same without the path.
    std::string origin() const;
    // Whether what is sent there stays on this computer.
    bool isOnThisComputer() const;
};

// The address in a text such as "http://127.0.0.1:8080/v1", "https://example.org" or "localhost:8080"; absent
// when it is none. "/v1" is added to one without a path, and the scheme's own port, or the one given, to one
// without a port.
std::optional<ServerAddress> readServerAddress(std::string_view text, std::uint16_t defaultPort = 0);

} // namespace platform
