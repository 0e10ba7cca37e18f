#include "rewriting/rewrite.h"

namespace quillmark {

namespace {

bool hasResult(Stage stage) {
    switch (stage) {
    case Stage::done:
    case Stage::stopped:
    case Stage::copied:
    case Stage::refused:
        return true;
    default:
        return false;
    }
}

} // namespace

bool canRewrite(const Rewrite& rewrite) {
    return rewrite.stage != Stage::nothing && rewrite.stage != Stage::applying &&
           !rewrite.capture.text.empty();
}

bool canStop(const Rewrite& rewrite) { return rewrite.stage == Stage::rewriting; }

// Half an answer in the place of a whole text would be a loss; one that the person has completed is theirs.
bool canApply(const Rewrite& rewrite) {
    return !rewrite.text.empty() &&
           (rewrite.stage == Stage::done || (rewrite.edited && hasResult(rewrite.stage)));
}

bool canCopy(const Rewrite& rewrite) {
    return !rewrite.text.empty() && rewrite.stage != Stage::rewriting && rewrite.stage != Stage::applying;
}

bool canPutBack(const Rewrite& rewrite) { return rewrite.stage == Stage::applied; }

bool canEdit(const Rewrite& rewrite) { return hasResult(rewrite.stage); }

bool isUnfinished(const Rewrite& rewrite) {
    return rewrite.stage == Stage::rewriting || rewrite.stage == Stage::applying ||
           (rewrite.edited && !rewrite.used);
}

std::optional<std::string> withOriginalBack(const Capture& now, const Rewrite& rewrite) {
    if (now.token.empty() || now.truncated || now.appId != rewrite.capture.appId || rewrite.text.empty())
        return std::nullopt;
    const auto place = now.text.find(rewrite.text);
    if (place == std::string::npos || now.text.find(rewrite.text, place + 1) != std::string::npos)
        return std::nullopt;
    auto text = now.text;
    return text.replace(place, rewrite.text.size(), rewrite.capture.text);
}

} // namespace quillmark
