#include "platform/models/server/addresses.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <system_error>

namespace platform {
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

constexpr std::uint16_t ollamaPort = 11434;
// llama-server's, and what other front ends start it on; LM Studio's; vLLM's.
constexpr std::array<std::uint16_t, 4> otherPorts{8080, 9931, 1234, 8000};

std::optional<std::uint16_t> portIn(std::string_view digits) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (error != std::errc() || end != digits.data() + digits.size() || port == 0) return std::nullopt;
    return port;
}

// "host", "host:port", ":port", "[::1]:port".
std::optional<ModelServer> authority(std::string_view text, std::uint16_t defaultPort) {
    ModelServer server{.port = defaultPort};
    const bool bracketed = text.starts_with('[');
    const std::size_t hostEnd = bracketed ? text.find(']') : text.find(':');
    if (bracketed && hostEnd == std::string_view::npos) return std::nullopt;
    const auto host = bracketed ? text.substr(1, hostEnd - 1) : text.substr(0, hostEnd);
    const auto rest = hostEnd == std::string_view::npos ? "" : text.substr(hostEnd + (bracketed ? 1 : 0));
    if (!rest.empty()) {
        const auto port = rest.front() == ':' ? portIn(rest.substr(1)) : std::nullopt;
        if (!port) return std::nullopt;
        server.port = *port;
    }
    // A server that listens on every address is reached on this computer's own.
    if (!host.empty() && host != "0.0.0.0" && host != "::") server.host = host;
    return server;
}

// Ollama reads the same variable to know where to listen. An address elsewhere says where somebody's server
// is, not that text may go there: only OPENAI_BASE_URL says that.
ModelServer ollama() {
    const std::string value = variable("OLLAMA_HOST");
    std::string_view host = value;
    if (host.starts_with("http://")) host.remove_prefix(7);
    host = host.substr(0, host.find('/'));
    const auto server = authority(host, ollamaPort);
    return server && server->isOnThisComputer() ? *server : ModelServer{.port = ollamaPort};
}

} // namespace

std::string ModelServer::address() const {
    const bool bracketed = host.find(':') != std::string::npos;
    return (bracketed ? '[' + host + ']' : host) + ':' + std::to_string(port);
}

// "127.example.com" is a name.
bool ModelServer::isOnThisComputer() const {
    in_addr address{};
    if (inet_pton(AF_INET, host.c_str(), &address) == 1)
        return ntohl(address.s_addr) >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET;
    return host == "localhost" || host == "::1";
}

std::optional<ModelServer> modelServerAt(std::string_view url) {
    constexpr std::string_view scheme = "http://";
    if (!url.starts_with(scheme)) return std::nullopt;
    url.remove_prefix(scheme.size());
    const std::size_t slash = std::min(url.find('/'), url.size());
    if (slash == 0) return std::nullopt;
    auto server = authority(url.substr(0, slash), 80);
    auto path = url.substr(slash);
    while (path.ends_with('/'))
        path.remove_suffix(1);
    if (server && !path.empty()) server->path = path;
    return server;
}

ModelServers modelServers() {
    ModelServers servers;
    const std::string model = variable("OPENAI_MODEL");
    if (const std::string url = variable("OPENAI_BASE_URL"); !url.empty()) {
        servers.setExplicitly = true;
        if (auto server = modelServerAt(url)) {
            server->key = variable("OPENAI_API_KEY");
            server->model = model;
            servers.candidates.push_back(*server);
        }
        return servers;
    }
    servers.candidates.push_back(ollama());
    for (const auto port : otherPorts)
        servers.candidates.push_back({.port = port});
    for (auto& server : servers.candidates)
        server.model = model;
    return servers;
}

} // namespace platform
