#include "rewriting/describe.h"

#include "language/rewriting_phrases.h"
#include "rewriting/rewrite.h"
#include "rewriting/words.h"

namespace quillmark {

std::string placeOf(const Capture& capture) {
    const auto program = capture.appName.empty() ? say(phrases::unnamedProgram) : capture.appName;
    return capture.title.empty() ? program : program + " — " + capture.title;
}

std::string extentOf(const Capture& capture) {
    const Phrase& kind = capture.source == "selection" ? phrases::selection
                         : capture.source == "field"   ? phrases::wholeField
                         : capture.source == typedHere ? phrases::ownText
                                                       : phrases::fromClipboard;
    return say(kind) + ", " + count(characters(capture.text), phrases::oneCharacter, phrases::manyCharacters);
}

std::vector<std::string> limitsOf(const Capture& capture) {
    std::vector<std::string> limits;
    if (capture.truncated) limits.push_back(say(phrases::shortened));
    if (capture.token.empty()) limits.push_back(say(phrases::onlyCopied));
    return limits;
}

} // namespace quillmark
