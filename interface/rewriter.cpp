#include "rewriter.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillmark {

namespace {

constexpr auto instructions =
    "Rewrite the user's text in the same language: correct spelling, grammar and punctuation, "
    "and keep its meaning, tone, line breaks and formatting. Answer with the rewritten text "
    "alone, without comments or quotation marks.";

// A token is at least one byte long.
int tokensFor(const std::string& text) {
    return static_cast<int>(std::clamp<std::size_t>(text.size(), 512, 16'384));
}

// With the blanks and line breaks that the original begins and ends with: models leave them out.
std::string withEdgesOf(const std::string& original, const std::string& text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks), start = original.find_first_not_of(blanks);
    if (first == std::string::npos || start == std::string::npos) return {};
    return original.substr(0, start) + text.substr(first, text.find_last_not_of(blanks) + 1 - first) +
           original.substr(original.find_last_not_of(blanks) + 1);
}

} // namespace

Rewriter::Rewriter(flutter::BinaryMessenger& messenger, std::function<void(std::function<void()>)> async,
                   Handlers handlers)
    : handlers_(std::move(handlers)), model_(messenger, [this](const ModelEvent& event) { handle(event); }),
      spelling_(std::move(async)) {}

void Rewriter::rewrite(const std::string& text) {
    if (!current_.empty()) model_.cancel(current_);
    current_ = "rewrite-" + std::to_string(++requests_);
    original_ = text;
    latest_.clear();
    spelling_.cancel();
    model_.availability([this, asked = current_](const std::optional<std::string>& whyNot) {
        if (current_ == asked) start(whyNot);
    });
}

void Rewriter::start(const std::optional<std::string>& whyNoModel) {
    if (!whyNoModel) return model_.respond(current_, instructions, original_, tokensFor(original_));
    current_.clear();
    if (!Spelling::isInstalled()) return handlers_.failed(*whyNoModel);
    handlers_.spellingOnly(*whyNoModel);
    spelling_.correct(original_, {.growing = handlers_.growing, .done = handlers_.done});
}

void Rewriter::handle(const ModelEvent& event) {
    if (event.request != current_) return;
    if (event.kind == ModelEvent::Kind::text) {
        latest_ = event.words;
        return handlers_.growing(latest_);
    }
    current_.clear();
    switch (event.kind) {
    case ModelEvent::Kind::done:
        return finish(event.words);
    case ModelEvent::Kind::refused:
        return handlers_.failed("the model would not: " + event.words);
    default:
        return handlers_.failed(event.words);
    }
}

// Half an answer in the place of a whole text would be a loss.
void Rewriter::finish(const std::string& reason) {
    const auto text = withEdgesOf(original_, latest_);
    if (reason == "length") return handlers_.failed("the text is too long for this model; select less of it");
    if (text.empty()) return handlers_.failed("the model answered nothing; try again");
    handlers_.done(text);
}

} // namespace quillmark
