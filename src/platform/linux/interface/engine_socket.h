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

// The socket on which the host waits for its interface, and the one connection it serves. Apart from close()
// nothing blocks: each entry in the main queue reads one bounded piece, and what the interface does not take
// yet waits in memory. Main thread only.
class EngineSocket {
public:
    struct Callbacks {
        // Bytes in the pieces they arrived in. A sentence in return closes the connection and is passed on
        // to `ended`.
        std::function<std::optional<std::string>(std::span<const std::uint8_t>)> received;
        // The connection has ended, and everything that arrived on it has been handed over. `why` is absent
        // when the interface closed it. Called once.
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

    // May be called before the interface connects.
    void write(std::vector<std::uint8_t> bytes);

    // Blocks until the interface has taken all that was written, at most for `limit`, and closes. No callback
    // follows.
    void close(std::chrono::milliseconds limit);

private:
    void accept();
    void watchForBytes();
    void readSome();
    void flushSoon();
    void flush();
    void end(std::optional<std::string> why);
    void disconnectWatches();

    Callbacks callbacks_;
    SocketFolder folder_;
    FileDescriptor listener_; // closed once the interface has connected, which refuses all others
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
