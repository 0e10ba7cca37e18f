#pragma once

#include <memory>

namespace flutter {

class BinaryMessenger;

// The interface program's side of the host: one engine, reached over its messenger. Creating one starts the
// interface; messages flow from the next turn of the main loop on. Owned by the window. Main thread only.
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
