#include "rewriting/generator.h"

#include "language/rewriting_phrases.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillmark {

namespace {

// A token is at least one byte long.
int tokensFor(const std::string& text) {
    return static_cast<int>(std::clamp<std::size_t>(text.size(), 512, 16'384));
}

constexpr std::string_view blanks = " \t\r\n";

// With the blanks and line breaks that the original begins with: models leave them out.
std::string withStartOf(const std::string& original, const std::string& text) {
    const auto first = text.find_first_not_of(blanks), start = original.find_first_not_of(blanks);
    if (first == std::string::npos || start == std::string::npos) return {};
    return original.substr(0, start) + text.substr(first);
}

// And with those that it ends with.
std::string withEdgesOf(const std::string& original, const std::string& text) {
    const auto words = withStartOf(original, text.substr(0, text.find_last_not_of(blanks) + 1));
    return words.empty() ? words : words + original.substr(original.find_last_not_of(blanks) + 1);
}

} // namespace

Generator::Generator(flutter::BinaryMessenger& messenger, SpellingCorrector spelling, Handlers handlers)
    : handlers_(std::move(handlers)), model_(messenger, [this](const ModelEvent& event) { handle(event); }),
      spelling_(std::move(spelling)) {}

void Generator::start(Request request) {
    cancel();
    request_ = std::move(request);
    latest_.clear();
    current_ = "rewrite-" + std::to_string(++requests_);
    if (!request_.modelAllowed) return begin(say(phrases::modelDeclined));
    model_.availability([this, asked = current_](const std::optional<std::string>& whyNot) {
        if (current_ == asked) begin(whyNot);
    });
}

void Generator::cancel() {
    if (current_.empty()) return;
    model_.cancel(current_);
    if (spelling_.cancel) spelling_.cancel();
    current_.clear();
}

void Generator::begin(const std::optional<std::string>& whyNoModel) {
    if (!whyNoModel)
        return model_.respond(current_, request_.instructions, request_.text, tokensFor(request_.text),
                              !request_.anotherWay);
    if (request_.spellingWillDo && spelling_.correct) return correctSpelling();
    current_.clear();
    handlers_.failed(spelling_.correct ? say(phrases::needsModel, {say(phrases::correct), *whyNoModel})
                                       : *whyNoModel);
}

void Generator::correctSpelling() {
    handlers_.spellingOnly();
    spelling_.correct(
        request_.text, [this](const std::string& soFar) { handlers_.growing(soFar); },
        [this](const std::string& text) {
            current_.clear();
            handlers_.done(text);
        });
}

void Generator::handle(const ModelEvent& event) {
    if (event.request != current_) return;
    if (event.kind == ModelEvent::Kind::text) {
        latest_ = event.words;
        return handlers_.growing(withStartOf(request_.text, latest_));
    }
    current_.clear();
    switch (event.kind) {
    case ModelEvent::Kind::done:
        return finish(event.words);
    case ModelEvent::Kind::refused:
        return handlers_.failed(say(phrases::wouldNot, {event.words}));
    default:
        return handlers_.failed(event.words);
    }
}

// Half an answer in the place of a whole text would be a loss.
void Generator::finish(const std::string& reason) {
    const auto text = withEdgesOf(request_.text, latest_);
    if (reason == "length") return handlers_.failed(say(phrases::tooLong));
    if (text.empty()) return handlers_.failed(say(phrases::emptyAnswer));
    handlers_.done(text);
}

} // namespace quillmark
