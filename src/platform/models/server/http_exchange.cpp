#include "platform/models/server/http_exchange.h"

#include "platform/models/generation/background_executor.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>

#include <array>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace platform {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;
using beast::error_code;
using Endpoints = std::vector<tcp::endpoint>;

constexpr auto withError = asio::as_tuple(asio::use_awaitable);

struct Outcome {
    HttpEnd end = HttpEnd::complete;
    std::string reason = {};
};

Outcome unreachable(error_code error) {
    if (error == beast::error::timeout) error = asio::error::timed_out; // in words that say what was tried
    return {HttpEnd::unreachable, error.message()};
}

Outcome failure(error_code error) {
    return {error == beast::error::timeout ? HttpEnd::silent : HttpEnd::broken, error.message()};
}

asio::thread_pool& threadsFor(const HttpRequest& request) {
    if (!request.urgent) return backgroundPool();
    static auto& thread = *std::make_unique<asio::thread_pool>(1).release();
    return thread;
}

class HttpExchange : public std::enable_shared_from_this<HttpExchange> {
public:
    HttpExchange(HttpRequest request, std::shared_ptr<HttpReceiver> receiver)
        : request_(std::move(request)), receiver_(std::move(receiver)),
          stream_(asio::make_strand(threadsFor(request_))), resolver_(stream_.get_executor()) {}

    void start() {
        asio::co_spawn(
            stream_.get_executor(), [self = shared_from_this()] { return self->run(); }, asio::detached);
    }

    // What waits for the connection fails at once, and finds it closed.
    void close() {
        asio::post(stream_.get_executor(), [self = shared_from_this()] {
            self->closed_ = true;
            self->resolver_.cancel();
            self->stream_.close();
        });
    }

private:
    asio::awaitable<void> run() {
        Outcome outcome;
        if (!closed_) outcome = co_await exchange();
        stream_.close();
        if (!closed_) receiver_->finished(outcome.end, outcome.reason);
        receiver_.reset();
    }

    asio::awaitable<Outcome> exchange() {
        if (const auto error = co_await connect()) co_return unreachable(error);
        receiver_->connected();
        if (const auto error = co_await send()) co_return failure(error);
        co_return co_await receive();
    }

    asio::awaitable<error_code> connect() {
        error_code error;
        const auto endpoints = co_await resolve(error);
        if (error || closed_) co_return error;
        stream_.expires_after(request_.connectLimit);
        const auto [failed, endpoint] = co_await stream_.async_connect(endpoints, withError);
        // Small pieces go out at once.
        if (!failed) stream_.socket().set_option(tcp::no_delay(true), error);
        co_return failed;
    }

    asio::awaitable<Endpoints> resolve(error_code& error) {
        if (auto numeric = numericEndpoints(); !numeric.empty()) co_return numeric;
        const auto [failed, results] =
            co_await resolver_.async_resolve(request_.host, std::to_string(request_.port), withError);
        error = failed;
        co_return Endpoints(results.begin(), results.end());
    }

    // Empty for a name. A plain function: g++ 12 destroys lists of values in coroutines twice.
    Endpoints numericEndpoints() const {
        const auto port = request_.port;
        if (request_.host == "localhost")
            return {{asio::ip::address_v4::loopback(), port}, {asio::ip::address_v6::loopback(), port}};
        error_code notNumeric;
        const auto address = asio::ip::make_address(request_.host, notNumeric);
        return notNumeric ? Endpoints{} : Endpoints{{address, port}};
    }

    http::request<http::string_body> message() {
        http::request<http::string_body> result(request_.body.empty() ? http::verb::get : http::verb::post,
                                                request_.target, 11, std::move(request_.body));
        const bool numericV6 = request_.host.find(':') != std::string::npos;
        result.set(http::field::host, (numericV6 ? '[' + request_.host + ']' : request_.host) + ':' +
                                          std::to_string(request_.port));
        result.set(http::field::connection, "close");
        if (!result.body().empty()) result.set(http::field::content_type, "application/json");
        if (!request_.bearer.empty()) result.set(http::field::authorization, "Bearer " + request_.bearer);
        result.prepare_payload();
        return result;
    }

    asio::awaitable<error_code> send() {
        auto request = message();
        stream_.expires_after(request_.sendLimit);
        const auto [error, sent] = co_await http::async_write(stream_, request, withError);
        co_return error;
    }

    asio::awaitable<Outcome> receive() {
        constexpr std::size_t longestLine = 1 << 16; // of the protocol's own
        beast::flat_buffer buffer(longestLine);
        http::response_parser<http::buffer_body> parser;
        parser.body_limit(boost::none);
        stream_.expires_after(request_.headLimit);
        const auto [error, headBytes] = co_await http::async_read_header(stream_, buffer, parser, withError);
        if (error || closed_) co_return failure(error);
        auto limit = receiver_->head(parser.get().result_int());
        std::array<char, 8192> piece;
        while (!parser.is_done()) {
            parser.get().body().data = piece.data();
            parser.get().body().size = piece.size();
            stream_.expires_after(limit);
            auto [failed, bytes] = co_await http::async_read_some(stream_, buffer, parser, withError);
            if (failed == http::error::need_buffer) failed = {};
            if (closed_) break;
            const std::string_view got(piece.data(), piece.size() - parser.get().body().size);
            if (!got.empty()) {
                const auto next = receiver_->body(got);
                closed_ = !next;
                if (closed_) break;
                limit = *next;
            }
            if (failed) co_return failure(failed);
        }
        co_return Outcome{};
    }

    HttpRequest request_;
    std::shared_ptr<HttpReceiver> receiver_;
    beast::tcp_stream stream_;
    tcp::resolver resolver_;
    bool closed_ = false; // this and all above: on the stream's strand only
};

} // namespace

std::function<void()> startHttpExchange(HttpRequest request, std::shared_ptr<HttpReceiver> receiver) {
    const auto exchange = std::make_shared<HttpExchange>(std::move(request), std::move(receiver));
    exchange->start();
    return [weak = std::weak_ptr(exchange)] {
        if (const auto open = weak.lock()) open->close();
    };
}

} // namespace platform
