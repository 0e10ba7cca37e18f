#pragma once

#include <memory>

namespace flutter {

class BinaryMessenger;

// The running interface. Creating a controller starts the interface program; messages to and from it, over
// the messenger, are handled from the next turn of the main loop on. Owned by the window. Main thread only.
class ViewController {
public:
    ViewController();
    ~ViewController();
    ViewController(const ViewController&) = delete;
    ViewController& operator=(const ViewController&) = delete;

    // Lives as long as the controller.
    BinaryMessenger& binaryMessenger() const;

    class Native;
    Native& native() const;

private:
    std::unique_ptr<Native> native_;
};

} // namespace flutter
