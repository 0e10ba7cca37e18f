#include "platform/linux/interface/view_controller.h"

#include "platform/linux/base/main_loop.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/interface/program.h"
#include "platform/main_queue.h"

#include <glibmm/arrayhandle.h>
#include <glibmm/vectorutils.h>

#include <chrono>
#include <utility>

namespace flutter {
namespace {

using namespace std::chrono_literals;

constexpr int cannotStart = 127; // as a shell has it

constexpr auto graceForLastBytes = 500ms;
constexpr auto graceForProcess = 1000ms;

std::string name() { return "the interface " + platform::interfaceCommand().at(0); }

} // namespace

ViewController::Native::Native()
    : messenger_([this](std::vector<std::uint8_t> bytes) {
          if (socket_) socket_->write(std::move(bytes));
      }) {
    std::string whyNot;
    socket_ = platform::EngineSocket::listen(
        {[this](std::span<const std::uint8_t> bytes) { return messenger_.receive(bytes); },
         [this](std::optional<std::string> why) { connectionEnded(std::move(why)); }},
        whyNot);
    if (!socket_) {
        finish("there is no place for the interface's socket (" + whyNot +
               "); make $XDG_RUNTIME_DIR or the temporary folder writable.");
        return;
    }
    platform::MainQueue::async([this, life = std::weak_ptr(life_)] {
        if (!life.expired()) start();
    });
}

ViewController::Native::~Native() {
    if (socket_) socket_->close(graceForLastBytes);
    if (process_) process_->end(graceForProcess);
}

void ViewController::Native::start() {
    // In place of those the host itself may have inherited, being started from another host's interface.
    char** variables = g_environ_setenv(g_get_environ(), "QUILLMARK_SOCKET", socket_->path().c_str(), TRUE);
    variables = view_ ? g_environ_setenv(variables, "QUILLMARK_VIEW", std::to_string(*view_).c_str(), TRUE)
                      : g_environ_unsetenv(variables, "QUILLMARK_VIEW");
    const auto environment =
        Glib::ArrayHandler<std::string>::array_to_vector(variables, Glib::OWNERSHIP_DEEP);
    std::string whyNot;
    process_ = platform::InterfaceProcess::start(
        platform::interfaceCommand(), environment, [this] { processEnded(); }, whyNot);
    if (!process_) finish(name() + " could not be started: " + whyNot);
}

// What the process said last may still be in the socket; its end is the connection's end too, unless a child
// of its own keeps the connection.
void ViewController::Native::processEnded() {
    if (!socket_->connected()) return connectionEnded(std::nullopt);
    platform::MainQueue::asyncAfter(200ms, [this, life = std::weak_ptr(life_)] {
        if (!life.expired() && socket_->connected()) connectionEnded(std::nullopt);
    });
}

void ViewController::Native::connectionEnded(std::optional<std::string> why) {
    if (!process_) return;
    const bool byItself = process_->end(graceForProcess);
    if (why) return finish("closed the connection to " + name() + ": " + *why);
    if (!byItself)
        return finish(name() + " left its connection but went on; it was stopped, and the host ends.");
    finish(name() + " " + process_->ending() + ", and the host ends with it.");
}

void ViewController::Native::finish(std::string lastLine) {
    platform::printMessage(lastLine);
    platform::endMainLoop(process_ ? process_->exitStatus().value_or(cannotStart) : cannotStart);
}

ViewController::ViewController() : native_(std::make_unique<Native>()) {}

ViewController::~ViewController() = default;

BinaryMessenger& ViewController::binaryMessenger() const { return native_->messenger(); }

ViewController::Native& ViewController::native() const { return *native_; }

} // namespace flutter
