// What the host adds between a model server and the interface: its share of each token, how soon a
// cancellation is felt at either end, and how long it looks for servers, whatever they do. Each figure beside
// its limit.
#include "flutter/frame.h"
#include "flutter/frame_messenger.h"
#include "flutter/standard_codec.h"
#include "model/system_model_bridge.h"
#include "testing/model_server/scripted_server.h"

#include <glib.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using flutter::EncodableMap;
using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

// Microseconds.
using Samples = std::vector<double>;

double share(Samples samples, double at) {
    std::ranges::sort(samples);
    return samples.at(static_cast<std::size_t>(at * static_cast<double>(samples.size() - 1)));
}

// `unit` in microseconds.
void print(const char* what, const Samples& samples, const char* name, double unit, double limit) {
    std::printf("%-62s median %8.2f %s   most %8.2f %s   limit %g %s\n", what, share(samples, 0.5) / unit,
                name, share(samples, 1) / unit, name, limit, name);
    std::fflush(stdout);
}

// The interface's end: counts the frames that leave for it.
class Interface {
public:
    Interface() { call("quillmark.quillmark/system_model/events", "listen", {}); }

    void call(const char* method, const EncodableMap& arguments) {
        call("quillmark.quillmark/system_model", method, arguments);
    }
    void respond() { call("respond", {{"request_id", "a"}, {"prompt", "hello"}, {"max_tokens", 1 << 20}}); }

    // Runs the main loop.
    void runUntil(const auto& condition) {
        while (!condition())
            g_main_context_iteration(nullptr, TRUE);
    }
    void runUntilFrame(std::size_t count) {
        runUntil([&] { return frames >= count; });
    }

    std::atomic<std::size_t> frames = 0; // answers to calls are not counted
    Clock::time_point lastAt;
    bool cancelled = false, done = false;

private:
    void call(const char* channel, const char* method, const EncodableMap& arguments) {
        const auto frame = flutter::encodeFrame(
            {flutter::FrameKind::message, 0, channel, flutter::encodeMethodCall({method, arguments})});
        if (messenger_.receive(*frame)) std::abort();
    }

    flutter::FrameMessenger messenger_{[this](const std::vector<std::uint8_t>& bytes) {
        lastAt = Clock::now();
        const std::string last(
            bytes.end() - static_cast<std::ptrdiff_t>(std::min<std::size_t>(bytes.size(), 9)), bytes.end());
        cancelled = last.ends_with("cancelled");
        done = last.ends_with("stop");
        ++frames;
        frames.notify_one();
    }};
    std::shared_ptr<SystemModelBridge> bridge_ = SystemModelBridge::create(messenger_);
};

void use(const std::string& url) {
    setenv("QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1", 1);
    setenv("OPENAI_BASE_URL", url.c_str(), 1);
}

const std::string done = "data: [DONE]\n\n";

// The server sends each token when the interface has the one before.
Samples latencies(std::size_t tokens) {
    Interface interface;
    Samples samples;
    const ScriptedServer server({.chat = [&](ClientConnection& connection) {
        connection.head(200);
        for (std::size_t i = 0; i < tokens; ++i) {
            const auto sent = Clock::now();
            connection.text("toke");
            for (std::size_t seen; (seen = interface.frames) <= i;)
                interface.frames.wait(seen);
            samples.push_back(Microseconds(interface.lastAt - sent).count());
        }
        connection.send(done);
    }});
    use(server.url());
    interface.respond();
    interface.runUntilFrame(tokens + 1);
    return samples;
}

// The same way for a bare reader: the kernel's share.
Samples bareLatencies(std::size_t tokens) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) std::abort();
    std::atomic<std::size_t> received = 0;
    Clock::time_point at;
    std::thread reader([&] {
        std::array<char, 4096> buffer;
        while (recv(ends[1], buffer.data(), buffer.size(), 0) > 0) {
            at = Clock::now();
            ++received;
            received.notify_one();
        }
    });
    Samples samples;
    for (std::size_t i = 0; i < tokens; ++i) {
        const auto sent = Clock::now();
        ClientConnection(ends[0]).text("toke");
        for (std::size_t seen; (seen = received) <= i;)
            received.wait(seen);
        samples.push_back(Microseconds(at - sent).count());
    }
    shutdown(ends[0], SHUT_RDWR);
    reader.join();
    close(ends[0]);
    close(ends[1]);
    return samples;
}

// Microseconds a token when the server sends all it has, the answer growing to `bytes`.
double perToken(std::size_t bytes, std::string_view token) {
    const std::size_t tokens = bytes / token.size();
    std::string stream = "HTTP/1.1 200 OK\r\n\r\n";
    for (std::size_t i = 0; i < tokens; ++i)
        stream += "data: {\"choices\":[{\"delta\":{\"content\":\"" + std::string(token) + "\"}}]}\n\n";
    stream += done;
    Interface interface;
    Clock::time_point start;
    const ScriptedServer server({.chat = [&](ClientConnection& connection) {
        start = Clock::now();
        connection.send(stream);
    }});
    use(server.url());
    interface.respond();
    interface.runUntil([&] { return interface.done; });
    return Microseconds(interface.lastAt - start).count() / static_cast<double>(tokens);
}

void timeTokens() {
    constexpr std::size_t tokens = 2000;
    const auto host = latencies(tokens), bare = bareLatencies(tokens);
    print("token sent to \"text\" at the interface, one by one up to 8 KB", host, "us", 1, 50);
    print("  a bare reader woken by the same bytes", bare, "us", 1, 50);
    for (const std::size_t kilobytes : {1U, 2U, 4U, 8U, 16U, 32U, 64U}) {
        Samples samples;
        for (int i = 0; i < 15; ++i)
            samples.push_back(perToken(kilobytes << 10, "toke"));
        const auto what =
            "time a token, all sent at once, the text growing to " + std::to_string(kilobytes) + " KB";
        print(what.c_str(), samples, "us", 1, 50);
    }
}

// From the call to the last event at the interface, and to the closed connection at the server.
void timeCancellation(const char* when, std::chrono::milliseconds untilNextToken) {
    Samples event, close;
    for (int i = 0; i < 100; ++i) {
        Clock::time_point cancelled, closed;
        {
            Interface interface;
            const ScriptedServer server({.chat = [&](ClientConnection& connection) {
                connection.head(200);
                do
                    connection.text("a");
                while (!connection.waitForClose(untilNextToken));
                closed = Clock::now();
            }});
            use(server.url());
            interface.respond();
            interface.runUntilFrame(1);
            cancelled = Clock::now();
            interface.call("cancel", {{"request_id", "a"}});
            interface.runUntil([&] { return interface.cancelled; });
            event.push_back(Microseconds(interface.lastAt - cancelled).count());
        } // the server's threads have ended
        close.push_back(Microseconds(closed - cancelled).count());
    }
    print((std::string("\"cancel\" to the event at the interface, ") + when).c_str(), event, "ms", 1000, 20);
    print((std::string("\"cancel\" to the closed connection, ") + when).c_str(), close, "ms", 1000, 5);
}

// Takes connections and never serves them; with `full`, takes no more either.
class Unserved {
public:
    explicit Unserved(std::uint16_t port, bool full = false) : listener_(socket(AF_INET, SOCK_STREAM, 0)) {
        const int yes = 1;
        setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* where = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        if (bind(listener_, where, size) != 0 || listen(listener_, full ? 0 : 64) != 0)
            std::printf("port %d is taken by another program: left as it is\n", port);
        getsockname(listener_, where, &size);
        port_ = ntohs(address.sin_port);
        for (int i = 0; full && i < 4; ++i) {
            waiting_.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
            static_cast<void>(connect(waiting_.back(), where, size)); // under way is enough
        }
    }
    ~Unserved() {
        for (const int socket : waiting_)
            close(socket);
        close(listener_);
    }
    Unserved(const Unserved&) = delete;
    Unserved& operator=(const Unserved&) = delete;
    std::uint16_t port() const { return port_; }

private:
    int listener_;
    std::uint16_t port_ = 0;
    std::vector<int> waiting_;
};

// The first call, and ten in a row, of which nine find what the first one has.
void timeAvailability(const std::string& what, double limit) {
    Interface interface;
    Samples first, ten;
    for (int i = 0; i < 3; ++i) {
        std::this_thread::sleep_for(1050ms); // one look serves all who ask within a second
        const auto start = Clock::now();
        for (int call = 0; call < 10; ++call) {
            interface.call("availability", {});
            if (call == 0) first.push_back(Microseconds(Clock::now() - start).count());
        }
        ten.push_back(Microseconds(Clock::now() - start).count());
    }
    print(("\"availability\", " + what).c_str(), first, "ms", 1000, limit);
    print("  ten in a row", ten, "ms", 1000, limit + 20);
}

void timeAvailability() {
    unsetenv("OPENAI_BASE_URL");
    timeAvailability("nothing listens", 20);
    const auto served = [](const std::string& what, ServerBehaviour behaviour) {
        const ScriptedServer server(std::move(behaviour));
        use(server.url());
        timeAvailability(what, 300);
    };
    const auto slowly = [](ClientConnection& connection) {
        for (const char c : std::string("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{\"data\":1"))
            if (!connection.waitForClose(20ms)) connection.send({&c, 1});
    };
    served("a ready server", {});
    served("a loading server", {.health = 503});
    served("a silent server", {.probe = [](ClientConnection& connection) { connection.waitForClose(); }});
    served("a byte every 20 ms", {.probe = slowly});
    served("half an answer, then silence", {.probe = [](ClientConnection& connection) {
               connection.send("HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n{\"da");
               connection.waitForClose();
           }});
    served("half an answer, then the end", {.probe = [](ClientConnection& connection) {
               connection.send("HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n{\"da");
           }});
    {
        const Unserved full(0, true);
        use("http://127.0.0.1:" + std::to_string(full.port()));
        timeAvailability("a server that takes no connection", 300);
    }
    unsetenv("OPENAI_BASE_URL");
    const Unserved ollama(11434), llama(8080), other(9931), studio(1234), vllm(8000);
    timeAvailability("every usual port silent", 300);
}

} // namespace

int main() {
    timeTokens();
    timeCancellation("no token coming", 10s);
    timeCancellation("a token every 5 ms", 5ms);
    timeAvailability();
}
