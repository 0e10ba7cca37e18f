// The real host with the test as its interface: the test sends it any bytes and sees everything it sends,
// with times.
#pragma once

#include "flutter/frame.h"
#include "flutter/method_channel.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/process.h"
#include "testing/desktop/wait.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace testbed {

inline constexpr std::string_view desktopChannel = "quillmark.quillmark/desktop";

struct Received {
    flutter::Frame frame;
    Clock::time_point at;
};

// What stands before the interface on the host's command line.
struct HostOptions {
    std::vector<std::string> words;
};

class Host {
public:
    // Starts it and connects to it. Throws with what it
    // printed when it does not come up.
    explicit Host(const std::map<std::string, std::string>& environment = {},
                  const HostOptions& options = {});
    ~Host();

    Process& process() { return process_; }
    // Waits for the window and gives it the keyboard; its number.
    WindowId bringToFront(Desktop& desktop);
    const std::string& socketPath() const { return socketPath_; }
    // The number of the window to embed a view in.
    std::string view() const;

    // Bytes, frames, calls.
    void send(std::span<const std::uint8_t> bytes);
    void send(const flutter::Frame& frame);
    // The id to look for in the reply.
    std::uint32_t startCall(std::string_view method, const flutter::EncodableValue& arguments = {},
                            std::string_view channel = desktopChannel);
    // Waits for the answer; throws when there is none.
    flutter::CallOutcome call(std::string_view method, const flutter::EncodableValue& arguments = {},
                              std::string_view channel = desktopChannel);
    flutter::CallOutcome answer(std::uint32_t id);

    // Blocks until the host has sent something more, for measurements that cannot wait for the next look.
    void awaitBytes(milliseconds limit = reactionLimit);

    // Everything the host has sent so far, in order.
    const std::vector<Received>& received() const { return received_; }
    // The arguments of the next call from the host with that name, each seen once; absent when none comes in
    // time.
    std::optional<flutter::EncodableValue> nextCall(std::string_view method,
                                                    milliseconds limit = reactionLimit);
    // True when the host closes the connection in time.
    bool closes(milliseconds limit = reactionLimit);

    // Ends the connection, or the whole interface with that exit status, which then becomes the host's.
    void disconnect();
    void exitInterface(int status);

private:
    void receive();

    TemporaryFolder folder_;
    int exitPipe_;
    Process process_;
    std::string socketPath_;
    int socket_ = -1;
    bool closed_ = false;
    std::uint32_t lastId_ = 0;
    std::size_t seenCalls_ = 0;
    flutter::FrameReader reader_;
    std::vector<Received> received_;
};

// A text in the arguments of a call; "(none)" without one.
std::string textOf(const flutter::EncodableValue& arguments, std::string_view key);

// $QUILLMARK_HOST, or the host of this build.
std::string hostProgram();

} // namespace testbed
