#pragma once

#include "platform/linux/base/file_descriptor.h"
#include "platform/linux/interface/outgoing_bytes.h"
#include "platform/linux/interface/socket_folder.h"

#include <glibmm/main.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

// The socket on which the host waits for its interface, and the one connection it serves. Moves bytes and
// never blocks: reading hands over a bounded piece per entry of the main queue, writing keeps in memory what
// the interface does not take yet. Main thread only.
class EngineSocket {
public:
    struct Callbacks {
        // Bytes as they arrived; what they mean is the owner's. A sentence says why to close the connection.
        std::function<std::optional<std::string>(std::span<const std::uint8_t>)> received;
        // Once, after everything that arrived was handed over; absent when the interface itself ended it.
        std::function<void(std::optional<std::string> why)> ended;
    };

    // Null, with the reason in `whyNot`, when there is no place for a socket.
    static std::unique_ptr<EngineSocket> listen(Callbacks callbacks, std::string& whyNot);

    // `listener` listens in `folder` already.
    EngineSocket(Callbacks callbacks, SocketFolder folder, FileDescriptor listener);
    ~EngineSocket();
    EngineSocket(const EngineSocket&) = delete;
    EngineSocket& operator=(const EngineSocket&) = delete;

    std::string path() const { return folder_.socketPath(); }
    bool connected() const { return static_cast<bool>(connection_); }

    // What is written before the interface connects waits for it.
    void write(std::vector<std::uint8_t> bytes);

    // Blocks until the interface has taken what waits, at most for `grace`, and closes. No callback follows.
    void close(std::chrono::milliseconds grace);

private:
    void accept();
    void watchForBytes();
    void readSome();
    void flushSoon();
    void flush();
    void end(std::optional<std::string> why);
    void disconnectWatches();
    void later(void (EngineSocket::*step)());

    Callbacks callbacks_;
    SocketFolder folder_;
    FileDescriptor listener_; // closed once the interface has come: whoever comes later is refused
    FileDescriptor connection_;
    OutgoingBytes outgoing_;
    std::vector<std::uint8_t> buffer_;
    bool flushQueued_ = false;
    bool ended_ = false;
    sigc::connection listenerWatch_;
    sigc::connection readWatch_;
    sigc::connection writeWatch_;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace platform
