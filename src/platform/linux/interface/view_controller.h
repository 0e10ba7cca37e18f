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

    // The X window in which the interface may embed its view. Call it before the next turn of the main loop,
    // in which the interface starts.
    void setView(unsigned long window) { view_ = window; }

private:
    void start();
    void processEnded();
    void connectionEnded(std::optional<std::string> why);
    void finish(std::string lastLine);

    std::optional<unsigned long> view_;
    std::optional<platform::FrameTrace> trace_;
    FrameMessenger messenger_;
    std::unique_ptr<platform::EngineSocket> socket_;
    std::unique_ptr<platform::InterfaceProcess> process_;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace flutter
