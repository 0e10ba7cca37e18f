#include "platform/models/server/server_sent_events.h"

#include <algorithm>
#include <utility>

namespace platform {

void ServerSentEvents::feed(std::string_view bytes) {
    if (tooLong_) return;
    bytes_.erase(0, at_);
    looked_ -= at_;
    at_ = 0;
    bytes_ += bytes;
}

void ServerSentEvents::finish() {
    if (hasData_ && at_ == bytes_.size()) bytes_ += "\n\n";
}

std::optional<std::string_view> ServerSentEvents::next() {
    while (const auto read = line()) {
        if (!read->empty()) {
            field(*read);
            continue;
        }
        if (!hasData_) continue;
        hasData_ = false;
        event_.swap(data_);
        data_.clear();
        return event_;
    }
    return std::nullopt;
}

// Lines end in LF, CR or both.
std::optional<std::string_view> ServerSentEvents::line() {
    if (tooLong_) return std::nullopt;
    if (afterReturn_ && at_ < bytes_.size()) {
        if (bytes_[at_] == '\n') ++at_;
        afterReturn_ = false;
    }
    const std::size_t end = bytes_.find_first_of("\r\n", std::max(at_, looked_));
    if (end == std::string::npos) {
        looked_ = bytes_.size();
        tooLong_ = looked_ - at_ + data_.size() > mostEventBytes;
        return std::nullopt;
    }
    std::string_view found(bytes_.data() + at_, end - at_);
    afterReturn_ = bytes_[end] == '\r';
    at_ = looked_ = end + 1;
    if (std::exchange(atStart_, false) && found.starts_with("\xEF\xBB\xBF")) found.remove_prefix(3);
    return found;
}

// Lines with an empty name are comments; the other names say nothing about an answer.
void ServerSentEvents::field(std::string_view line) {
    const std::size_t colon = std::min(line.find(':'), line.size());
    const auto name = line.substr(0, colon);
    auto value = line.substr(std::min(colon + 1, line.size()));
    if (value.starts_with(' ')) value.remove_prefix(1);
    // llama-server reports an error that comes up in mid-answer under a name of its own.
    if (name != "data" && name != "error") return;
    if (hasData_) data_ += '\n';
    data_ += value;
    hasData_ = true;
    tooLong_ = data_.size() > mostEventBytes;
}

} // namespace platform
