// Reads a stream of server-sent events (text/event-stream, HTML Living Standard 9.2) as its bytes come, cut
// anywhere. A plain value.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

class ServerSentEvents {
public:
    static constexpr std::size_t mostEventBytes = 1 << 20;

    void feed(std::string_view bytes);

    // The data of the next event that has come whole. The view is valid until the next call.
    std::optional<std::string_view> next();

    // The connection has ended: a last event whose lines are whole counts, though no empty line followed.
    void finish();

    // An event is longer than any that a model sends. There will be no more.
    bool isTooLong() const { return tooLong_; }

private:
    std::optional<std::string_view> line();
    void field(std::string_view line);

    std::string bytes_;
    std::size_t at_ = 0;       // where the first unread line begins
    std::size_t looked_ = 0;   // no line ends before
    bool afterReturn_ = false; // the line before ended in CR: an LF that follows belongs to it
    bool atStart_ = true;
    bool tooLong_ = false;
    std::string data_;
    bool hasData_ = false;
    std::string event_;
};

} // namespace platform
