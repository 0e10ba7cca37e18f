#pragma once

#include "flutter/frame_messenger.h"
#include "platform/linux/interface/engine_socket.h"
#include "platform/linux/interface/frame_trace.h"
#include "platform/linux/interface/process.h"
#include "platform/view_controller.h"

#include <memory>
#include <optional>
#include <string>

namespace flutter {

// The interface's process and the socket to it. When either ends, the host ends with the exit status of the
// process.
class ViewController::Native {
public:
    Native();
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    FrameMessenger& messenger() { return messenger_; }

    // Starts the interface, which may embed its view in that X window. It takes longer to come up than the
    // host does from here to its main loop, and meanwhile its calls wait in the socket.
    void start(unsigned long view);

private:
    void processEnded();
    void connectionEnded(std::optional<std::string> why);
    void finish(std::string lastLine);

    std::optional<platform::FrameTrace> trace_;
    FrameMessenger messenger_;
    std::unique_ptr<platform::EngineSocket> socket_;
    std::unique_ptr<platform::InterfaceProcess> process_;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace flutter
