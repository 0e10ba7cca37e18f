#include "platform/linux/interface/view_controller.h"

#include "platform/linux/base/main_loop.h"
#include "platform/linux/base/trace.h"
#include "platform/linux/interface/program.h"
#include "platform/main_queue.h"

#include <glibmm/arrayhandle.h>
#include <glibmm/vectorutils.h>

#include <chrono>
#include <utility>

namespace flutter {
namespace {

using namespace std::chrono_literals;

constexpr int cannotStart = 127; // as a shell reports it

constexpr auto lastBytesLimit = 500ms;
constexpr auto processEndLimit = 1000ms;
// How long what the process wrote last may take to arrive once the process has ended.
constexpr auto lastReadLimit = 200ms;

std::string name() { return "the interface " + platform::interfaceCommand().at(0); }

} // namespace

ViewController::Native::Native()
    : messenger_([this](std::vector<std::uint8_t> bytes) {
          if (trace_) trace_->sent(bytes);
          if (socket_) socket_->write(std::move(bytes));
      }) {
    if (platform::trace::isOn())
        trace_.emplace([this](std::string_view channel) { return messenger_.isHandled(channel); });
    std::string whyNot;
    socket_ = platform::EngineSocket::listen(
        {[this](std::span<const std::uint8_t> bytes) {
             if (trace_) trace_->received(bytes);
             return messenger_.receive(bytes);
         },
         [this](std::optional<std::string> why) { connectionEnded(std::move(why)); }},
        whyNot);
    if (!socket_)
        finish("there is no place for the interface's socket (" + whyNot +
               "); make $XDG_RUNTIME_DIR or the temporary folder writable.");
}

ViewController::Native::~Native() {
    if (socket_) socket_->close(lastBytesLimit);
    if (process_) process_->end(processEndLimit);
}

void ViewController::Native::start(unsigned long view) {
    if (!socket_) return;
    // A host that another host's interface has started inherits that one's variables; they are replaced.
    char** variables = g_environ_setenv(g_get_environ(), "QUILLMARK_SOCKET", socket_->path().c_str(), TRUE);
    variables = g_environ_setenv(variables, "QUILLMARK_VIEW", std::to_string(view).c_str(), TRUE);
    const auto environment =
        Glib::ArrayHandler<std::string>::array_to_vector(variables, Glib::OWNERSHIP_DEEP);
    std::string whyNot;
    process_ = platform::InterfaceProcess::start(
        platform::interfaceCommand(), environment, [this] { processEnded(); }, whyNot);
    if (!process_) finish(name() + " could not be started: " + whyNot);
}

// What the process wrote last may still be in the socket, and ends with the end of the connection, unless a
// child of the process keeps the connection open.
void ViewController::Native::processEnded() {
    if (!socket_->connected()) return connectionEnded(std::nullopt);
    platform::MainQueue::asyncAfter(lastReadLimit, life_, [this] {
        if (socket_->connected()) connectionEnded(std::nullopt);
    });
}

void ViewController::Native::connectionEnded(std::optional<std::string> why) {
    if (!process_) return;
    const bool byItself = process_->end(processEndLimit);
    if (why) return finish("closed the connection to " + name() + ": " + *why);
    if (!byItself)
        return finish(
            name() + " closed its connection but did not end; it was stopped, and the host ends. Let it exit "
                     "when it closes the connection.");
    finish(name() + " " + process_->ending() + ", and the host ends with it.");
}

void ViewController::Native::finish(std::string lastLine) {
    platform::endMainLoop(
        {process_ ? process_->exitStatus().value_or(cannotStart) : cannotStart, std::move(lastLine)});
}

ViewController::ViewController() : native_(std::make_unique<Native>()) {}

ViewController::~ViewController() = default;

BinaryMessenger& ViewController::binaryMessenger() const { return native_->messenger(); }

ViewController::Native& ViewController::native() const { return *native_; }

} // namespace flutter
