// One request to an HTTP server and its answer as it comes, on background threads. Encrypted when the address
// begins with https: the server's certificate is checked then. Redirects are not followed.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct HttpRequest {
    std::string url = {};
    std::string body = {};   // JSON, sent with POST; empty: a GET
    std::string bearer = {}; // a key that goes along; empty: none
    bool urgent = false;     // on a thread that no flood of other answers delays
    std::chrono::milliseconds connectLimit = std::chrono::seconds(10);
    std::chrono::milliseconds headLimit = std::chrono::minutes(10); // from there until the answer begins
};

enum class HttpEnd {
    complete,
    unreachable, // nothing took the connection
    unanswered,  // nothing took or refused it within the limit
    untrusted,   // the other end could not prove that it is the server of that name
    silent,      // a later limit passed
    broken,      // the connection ended early, or what came is not HTTP
};

// What comes of an exchange, one call at a time, on a background thread. Calls must be short.
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
// connection at once, then or later and from any thread; dropping it changes nothing. A call of the
// receiver's that is under way may still end behind it.
[[nodiscard]] std::function<void()> startHttpExchange(HttpRequest request,
                                                      std::shared_ptr<HttpReceiver> receiver);

} // namespace platform
