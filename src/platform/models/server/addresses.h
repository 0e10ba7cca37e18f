// Where local model servers are looked for. Plain values and functions, any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct ModelServer {
    std::string host = "localhost"; // as HttpRequest has it
    std::uint16_t port = 0;
    std::string path = "/v1"; // what stands before "/chat/completions"
    std::string key = {};     // empty: none
    std::string model = {};   // the model to ask for; empty: the server's first

    bool operator==(const ModelServer&) const = default;

    // As the person would write it.
    std::string address() const;
    bool isOnThisComputer() const;
};

// The server at an address such as "http://127.0.0.1:8080/v1"; absent when that is no HTTP address, encrypted
// ones included. "/v1" is added to an address without a path.
std::optional<ModelServer> modelServerAt(std::string_view url);

struct ModelServers {
    // In the order in which they are asked.
    std::vector<ModelServer> candidates;
    // Whether the user set the one that is to be used. Any other is on this computer, so that no text leaves
    // it.
    bool setExplicitly = false;

    bool operator==(const ModelServers&) const = default;
};

// As the environment says at this moment (docs/model.md).
ModelServers modelServers();

} // namespace platform
