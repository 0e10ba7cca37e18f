// One request to an HTTP server and its answer as it comes, on background threads; no encryption.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct HttpRequest {
    std::string host = {}; // a name or a numeric address; "localhost" stands for both loopback addresses
    std::uint16_t port = 80;
    std::string target = {};
    std::string body = {};   // JSON, sent with POST; empty: a GET
    std::string bearer = {}; // a key that goes along; empty: none
    bool urgent = false;     // on a thread that no flood of other answers delays
    std::chrono::milliseconds connectLimit = std::chrono::seconds(10);
    std::chrono::milliseconds sendLimit = std::chrono::seconds(60);
    std::chrono::milliseconds headLimit = std::chrono::minutes(10); // until the answer begins
};

enum class HttpEnd {
    complete,
    unreachable, // nothing took the connection
    silent,      // a later limit passed
    broken,      // the connection ended early, or what came is not HTTP
};

// What comes of an exchange, one call at a time, on background threads.
class HttpReceiver {
public:
    virtual ~HttpReceiver() = default;

    // Somebody took the connection.
    virtual void connected() {}
    // How long the first piece of the body may take.
    virtual std::chrono::milliseconds head(unsigned status) = 0;
    // How long the next piece may take; absent: no more is needed, the connection is closed and nothing more
    // is reported.
    virtual std::optional<std::chrono::milliseconds> body(std::string_view bytes) = 0;
    // The last call, with the system's words for what went wrong. Left out after a close.
    virtual void finished(HttpEnd end, const std::string& reason) = 0;
};

// Starts the exchange, which keeps the receiver until it is over. The function given back closes the
// connection at once, then or later and from any thread; dropping it changes nothing.
[[nodiscard]] std::function<void()> startHttpExchange(HttpRequest request,
                                                      std::shared_ptr<HttpReceiver> receiver);

} // namespace platform
