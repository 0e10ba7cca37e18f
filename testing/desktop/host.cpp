#include "testing/desktop/host.h"

#include "flutter/arguments.h"
#include "flutter/standard_codec.h"
#include "testing/desktop/local_socket.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>

namespace testbed {

using flutter::Frame;
using flutter::FrameKind;

namespace {

// The interface's process says where the socket is and then waits to be told its exit status; the connection
// is the test's own.
std::vector<std::string> hostCommand(const TemporaryFolder& folder, const HostOptions& options) {
    std::vector<std::string> command{hostProgram()};
    command.insert(command.end(), options.words.begin(), options.words.end());
    command.insert(command.end(), {"/bin/sh", "-c",
                                   R"(printf %s "$QUILLMARK_VIEW" >"$1/view"
                       printf %s "$QUILLMARK_SOCKET" >"$1/new" && mv "$1/new" "$1/socket" &&
                       read -r status <"$1/exit"
                       exit "${status:-0}")",
                                   "interface", folder / ""});
    return command;
}

int exitPipe(const TemporaryFolder& folder) {
    const std::string path = folder / "exit";
    if (mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("No pipe can be made.");
    return open(path.c_str(), O_RDWR | O_CLOEXEC);
}

} // namespace

std::string textOf(const flutter::EncodableValue& arguments, std::string_view key) {
    const auto* text = flutter::asString(flutter::member(flutter::asMap(arguments), key));
    return text ? *text : "(none)";
}

std::string hostProgram() {
    const char* chosen = std::getenv("QUILLMARK_HOST");
    return chosen ? chosen : QUILLMARK_HOST_PROGRAM;
}

Host::Host(const std::map<std::string, std::string>& environment, const HostOptions& options)
    : exitPipe_(exitPipe(folder_)), process_(hostCommand(folder_, options), environment) {
    waitUntil([&] { return process_.exitStatus(milliseconds(0)) || !readFile(folder_ / "socket").empty(); });
    socketPath_ = readFile(folder_ / "socket");
    socket_ = connectTo(socketPath_);
    if (socket_ < 0) throw std::runtime_error("The host did not come up. It printed: " + process_.output());
}

Host::~Host() {
    exitInterface(0);
    process_.exitStatus();
    disconnect();
    close(exitPipe_);
}

WindowId Host::bringToFront(Desktop& desktop) {
    if (!desktop.bringToFront(process_.pid()))
        throw std::runtime_error("The host's window did not come up. It printed: " + process_.output());
    return desktop.windows(process_.pid()).front();
}

std::string Host::view() const { return readFile(folder_ / "view"); }

void Host::send(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return; // the host has closed it; closes() tells
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

void Host::send(const Frame& frame) { send(flutter::encodeFrame(frame).value()); }

std::uint32_t Host::startCall(std::string_view method, const flutter::EncodableValue& arguments,
                              std::string_view channel) {
    send({FrameKind::request, ++lastId_, std::string(channel),
          flutter::encodeMethodCall({std::string(method), arguments})});
    return lastId_;
}

flutter::CallOutcome Host::answer(std::uint32_t id) {
    const Frame* reply = nullptr;
    waitUntil([&] {
        receive();
        for (const auto& [frame, at] : received_)
            if (frame.kind == FrameKind::reply && frame.id == id) reply = &frame;
        return reply != nullptr || closed_;
    });
    if (reply == nullptr)
        throw std::runtime_error("The host gave no answer. It printed: " + process_.output());
    if (reply->payload.empty()) return flutter::NotImplemented{};
    const auto envelope = flutter::decodeEnvelope(reply->payload);
    if (!envelope) throw std::runtime_error("The host's answer cannot be decoded.");
    if (const auto* error = std::get_if<flutter::FlutterError>(&*envelope)) return *error;
    return std::get<flutter::EncodableValue>(*envelope);
}

flutter::CallOutcome Host::call(std::string_view method, const flutter::EncodableValue& arguments,
                                std::string_view channel) {
    return answer(startCall(method, arguments, channel));
}

void Host::awaitBytes(milliseconds limit) {
    pollfd socket{socket_, POLLIN, 0};
    poll(&socket, 1, static_cast<int>(limit.count()));
}

std::optional<flutter::EncodableValue> Host::nextCall(std::string_view method, milliseconds limit) {
    std::optional<flutter::EncodableValue> arguments;
    waitUntil(
        [&] {
            receive();
            while (!arguments && seenCalls_ < received_.size()) {
                const Frame& frame = received_[seenCalls_++].frame;
                if (frame.kind == FrameKind::reply) continue;
                const auto call = flutter::decodeMethodCall(frame.payload);
                if (call && call->method == method) arguments = call->arguments;
            }
            return arguments.has_value() || closed_;
        },
        limit);
    return arguments;
}

bool Host::closes(milliseconds limit) {
    return waitUntil(
        [&] {
            receive();
            return closed_;
        },
        limit);
}

void Host::disconnect() {
    if (socket_ >= 0) close(socket_);
    socket_ = -1;
    closed_ = true;
}

void Host::exitInterface(int status) {
    const std::string line = std::to_string(status) + "\n";
    if (write(exitPipe_, line.data(), line.size()) < 0) process_.signal(15);
}

void Host::receive() {
    std::array<std::uint8_t, 65536> buffer;
    while (!closed_) {
        const ssize_t count = recv(socket_, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
        closed_ = count <= 0;
        if (closed_) return;
        reader_.feed({buffer.data(), static_cast<std::size_t>(count)});
        while (auto frame = reader_.next())
            received_.push_back({std::move(*frame), Clock::now()});
        if (reader_.error()) throw std::runtime_error("The host broke the rules: " + *reader_.error());
    }
}

} // namespace testbed
