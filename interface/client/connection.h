// The interface's end of the socket to the host, and the loop that moves its messages. One thread only,
// except async(): handlers run inside run(), or inside turn() where a main loop of the interface's own calls
// it.
#pragma once

#include "flutter/frame_messenger.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace quillmark {

// A sentence for the person who started the program.
class ConnectionError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Connection {
public:
    // Connects to the host that started this program; throws ConnectionError when none did.
    static Connection toHost();

    // Takes over a connected socket.
    explicit Connection(int socket);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    flutter::BinaryMessenger& messenger() { return messenger_; }

    // Moves messages until stop(), or until the host ends the connection. Throws ConnectionError when the
    // host breaks the rules of the socket or the connection breaks.
    void run();
    void stop() { stopped_ = true; }

    // For a main loop of the interface's own: as often as the descriptor is readable (poll, a GLib or Qt
    // source), it calls turn(), which moves what there is without waiting. False once the host has ended the
    // connection; throws as run() does.
    int descriptor() const { return ready_; }
    bool turn();

    // Has `work` done inside run() or turn(), in order. Any thread.
    void async(std::function<void()> work);

private:
    void write(std::vector<std::uint8_t> bytes);
    void flush();
    void watch(int operation);
    bool receive();
    void work();

    int socket_;
    int wakeUp_; // an eventfd: readable while there is work
    int ready_;  // an epoll of both
    std::mutex mutex_;
    std::vector<std::function<void()>> work_;
    bool stopped_ = false;
    std::vector<std::uint8_t> outgoing_; // what the socket has not taken yet
    flutter::FrameMessenger messenger_;
};

} // namespace quillmark
