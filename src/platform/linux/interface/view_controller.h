#pragma once

#include "flutter/frame_messenger.h"
#include "platform/linux/interface/engine_socket.h"
#include "platform/linux/interface/process.h"
#include "platform/view_controller.h"

#include <memory>
#include <optional>
#include <string>

namespace flutter {

// The interface's process and the socket to it. Either one's end ends the host, with the process's exit
// status.
class ViewController::Native {
public:
    Native();
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    FrameMessenger& messenger() { return messenger_; }

    // The X window that the interface's view may be embedded in. Told to the interface when it starts, in the
    // next turn of the main loop.
    void setView(unsigned long window) { view_ = window; }

private:
    void start();
    void processEnded();
    void connectionEnded(std::optional<std::string> why);
    void finish(std::string lastLine);

    std::optional<unsigned long> view_;
    FrameMessenger messenger_;
    std::unique_ptr<platform::EngineSocket> socket_;
    std::unique_ptr<platform::InterfaceProcess> process_;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace flutter
