#include "testing/model_server/rewriting_model.h"

namespace testbed {

namespace {

// Of the text of a JSON string.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text)
        result += c == '\n' ? "\\n" : c == '"' ? "\\\"" : std::string(1, c);
    return result;
}

// Not in the middle of a character.
std::string firstHalf(const std::string& text) {
    auto end = text.size() / 2;
    while (end < text.size() && (text[end] & 0xC0) == 0x80)
        ++end;
    return text.substr(0, end);
}

} // namespace

void RewritingModel::answers(const std::string& text, Manner manner) {
    const std::lock_guard lock(mutex_);
    text_ = text;
    manner_ = manner;
}

int RewritingModel::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::string RewritingModel::request() {
    const std::lock_guard lock(mutex_);
    return request_;
}

int RewritingModel::hungUp() {
    const std::lock_guard lock(mutex_);
    return hungUp_;
}

void RewritingModel::finish() {
    const std::lock_guard lock(mutex_);
    finished_ = requests_;
}

void RewritingModel::chat(ClientConnection& connection) {
    std::unique_lock lock(mutex_);
    const int number = ++requests_;
    request_ = connection.request;
    const auto text = text_;
    const auto manner = manner_;
    lock.unlock();
    connection.head(manner == Manner::fails ? 500 : 200);
    if (manner == Manner::fails) return;
    const auto first = manner == Manner::whole ? text : firstHalf(text);
    connection.text(escaped(first));
    if (manner == Manner::dies || (manner == Manner::half && !mayFinish(number, connection))) return;
    connection.text(escaped(text.substr(first.size())));
    connection.send("data: {\"choices\":[{\"delta\":{},\"finish_reason\":\"stop\"}]}\n\ndata: [DONE]\n\n");
}

bool RewritingModel::mayFinish(int number, ClientConnection& connection) {
    constexpr std::chrono::milliseconds nextLook{10};
    for (;;) {
        const bool closed = connection.waitForClose(nextLook);
        const std::lock_guard lock(mutex_);
        if (closed) ++hungUp_;
        if (closed || finished_ >= number) return !closed;
    }
}

} // namespace testbed
