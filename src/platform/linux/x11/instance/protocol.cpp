#include "platform/linux/x11/instance/protocol.h"

#include <X11/Xatom.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace platform::x11::instance {
namespace {

using Outcome = InstanceAnswer::Outcome;

constexpr std::array targets{
    std::pair{InstanceRequest::show, "_QUILLMARK_REOPEN"},
    std::pair{InstanceRequest::greet, "_QUILLMARK_GREET"},
    std::pair{InstanceRequest::hide, "_QUILLMARK_HIDE"},
    std::pair{InstanceRequest::capture, "_QUILLMARK_CAPTURE"},
    std::pair{InstanceRequest::pause, "_QUILLMARK_PAUSE"},
    std::pair{InstanceRequest::quit, "_QUILLMARK_QUIT"},
    std::pair{InstanceRequest::report, "_QUILLMARK_REPORT"},
};

constexpr std::array outcomes{
    std::pair{Outcome::done, 'd'},
    std::pair{Outcome::differs, 'o'},
    std::pair{Outcome::refused, 'r'},
};

void setText(XlibConnection& connection, ::Window window, Atom name, Atom type, const std::string& text) {
    XChangeProperty(connection.display(), window, name, type, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
}

// As WM_COMMAND has them: each ends with a zero byte.
std::string joined(const std::vector<std::string>& words) {
    std::string all;
    for (const auto& word : words)
        all.append(word).push_back('\0');
    return all;
}

std::vector<std::string> split(const std::string& words) {
    std::vector<std::string> all;
    for (std::size_t start = 0; start < words.size();) {
        const std::size_t end = std::min(words.find('\0', start), words.size());
        all.push_back(words.substr(start, end - start));
        start = end + 1;
    }
    return all;
}

} // namespace

Atom selection(XlibConnection& connection) {
    return connection.atom(("_QUILLMARK_HOST_" + std::to_string(getuid())).c_str());
}

Atom target(XlibConnection& connection, InstanceRequest request) {
    for (const auto& [known, name] : targets)
        if (known == request) return connection.atom(name);
    return None;
}

std::optional<InstanceRequest> request(XlibConnection& connection, Atom target) {
    for (const auto& [known, name] : targets)
        if (connection.atom(name) == target) return known;
    return std::nullopt;
}

::Window makeWindow(XlibConnection& connection, const InstanceCaller& caller) {
    const ::Window window =
        XCreateSimpleWindow(connection.display(), connection.root(), -1, -1, 1, 1, 0, 0, 0);
    const auto process = static_cast<unsigned long>(getpid());
    XChangeProperty(connection.display(), window, connection.atom("_NET_WM_PID"), XA_CARDINAL, 32,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(&process), 1);
    setText(connection, window, connection.atom("_NET_STARTUP_ID"), connection.atom("UTF8_STRING"),
            caller.startupId);
    setText(connection, window, XA_WM_COMMAND, XA_STRING, joined(caller.command));
    return window;
}

InstanceCaller callerOf(XlibConnection& connection, ::Window window) {
    return {connection.text(window, connection.atom("_NET_STARTUP_ID")).value_or(""),
            split(connection.text(window, XA_WM_COMMAND).value_or(""))};
}

std::optional<pid_t> processOf(XlibConnection& connection, ::Window window) {
    const auto values = connection.values(window, connection.atom("_NET_WM_PID"));
    if (values.empty()) return std::nullopt;
    return static_cast<pid_t>(values.front());
}

std::string encode(const InstanceAnswer& answer) {
    for (const auto& [outcome, letter] : outcomes)
        if (outcome == answer.outcome) return letter + answer.line;
    return {};
}

InstanceAnswer decode(const std::string& bytes) {
    for (const auto& [outcome, letter] : outcomes)
        if (bytes.starts_with(letter)) return {outcome, bytes.substr(1)};
    return {};
}

} // namespace platform::x11::instance
