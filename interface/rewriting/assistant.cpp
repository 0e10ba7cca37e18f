#include "rewriting/assistant.h"

#include "language/rewriting_phrases.h"

#include <utility>

namespace quillmark {

using namespace std::chrono_literals;

namespace {

bool isBlank(const std::string& text) { return text.find_first_not_of(" \t\r\n") == std::string::npos; }

} // namespace

Assistant::Assistant(flutter::BinaryMessenger& messenger, Desktop& desktop, SpellingCorrector spelling,
                     const Settings& settings, Surroundings& surroundings)
    : desktop_(desktop), settings_(settings), surroundings_(surroundings),
      generator_(messenger, std::move(spelling),
                 {.growing =
                      [this](const std::string& soFar) {
                          rewrite_.text = soFar;
                          surroundings_.changed();
                      },
                  .done = [this](const std::string& text) { finished(text); },
                  .failed = [this](const std::string& sentence) { fail(sentence); },
                  .spellingOnly = [this] { rewrite_.spellingOnly = true; }}) {}

void Assistant::captured(const Capture& capture) {
    if (std::exchange(takingBack_, false)) return takeBack(capture);
    if (rewrite_.stage == Stage::applying) return; // the host captures nothing meanwhile either
    surroundings_.watchPerson();
    atOnce_ = settings_.way == WayOfWorking::atOnce;
    if (!atOnce_) surroundings_.show();
    begin(capture);
}

void Assistant::tryOut(const std::string& text) {
    atOnce_ = false;
    begin({.text = text, .source = typedHere});
}

void Assistant::begin(const Capture& capture) {
    generator_.cancel();
    ++round_;
    history_.add(rewrite_);
    rewrite_ = {.capture = capture};
    if (isBlank(capture.text)) return fail(say(phrases::nothingToRewrite));
    use(instructionsOf(settings_).front(), {});
}

void Assistant::use(const Instruction& instruction, const std::string& answer) {
    if (rewrite_.capture.text.empty() || rewrite_.stage == Stage::applying) return;
    if (rewrite_.edited) history_.add(rewrite_);
    rewrite_.instruction = instruction;
    rewrite_.answer = answer;
    generate(false);
}

void Assistant::again() {
    if (canRewrite(rewrite_)) generate(true);
}

void Assistant::consentAnswered() {
    if (rewrite_.stage == Stage::asking) generate(false);
}

void Assistant::generate(bool anotherWay) {
    generator_.cancel();
    rewrite_.text.clear();
    rewrite_.why.clear();
    rewrite_.edited = rewrite_.used = rewrite_.spellingOnly = rewrite_.originalCopied = false;
    enter(Stage::rewriting);
    surroundings_.askForConsent([this, anotherWay, round = ++round_](ModelConsent consent) {
        if (round == round_ && rewrite_.stage == Stage::rewriting) generate(anotherWay, consent);
    });
}

void Assistant::generate(bool anotherWay, ModelConsent consent) {
    if (consent == ModelConsent::notAsked) {
        enter(Stage::asking);
        if (atOnce_) tellOf(phrases::askingFirst, false);
        return;
    }
    generator_.start({.text = rewrite_.capture.text,
                      .instructions = systemMessage(rewrite_.instruction, rewrite_.answer),
                      .spellingWillDo = rewrite_.instruction.corrects,
                      .modelAllowed = consent == ModelConsent::given,
                      .anotherWay = anotherWay});
}

void Assistant::enter(Stage stage) {
    rewrite_.stage = stage;
    surroundings_.changed();
}

void Assistant::finished(const std::string& text) {
    rewrite_.text = text;
    enter(Stage::done);
    if (atOnce_) handOver();
}

void Assistant::fail(const std::string& sentence) {
    rewrite_.why = sentence;
    enter(Stage::failed);
    if (atOnce_) surroundings_.tell({.title = say(phrases::notRewritten), .body = sentence, .mayShow = true});
}

void Assistant::stop() {
    if (!canStop(rewrite_)) return;
    generator_.cancel();
    enter(Stage::stopped);
}

void Assistant::edit(const std::string& text) {
    if (!canEdit(rewrite_) || text == rewrite_.text) return;
    rewrite_.text = text;
    rewrite_.edited = true;
    rewrite_.used = false;
    enter(Stage::done);
}

void Assistant::reopen(std::size_t entryOfHistory) {
    if (entryOfHistory >= history_.entries().size() || rewrite_.stage == Stage::applying) return;
    generator_.cancel();
    auto entry = history_.take(entryOfHistory);
    history_.add(rewrite_);
    rewrite_ = std::move(entry);
    atOnce_ = false;
    if (rewrite_.stage == Stage::rewriting) rewrite_.stage = Stage::stopped;
    surroundings_.changed();
}

// Without the window, and only into a place that the person has not touched since: anything else would be
// refused there, and the host would bring its window up in the middle of their typing.
void Assistant::handOver() {
    constexpr auto nextLook = 20ms;
    if (surroundings_.personWentOn()) return tellOf(phrases::wentOn, true);
    if (!surroundings_.personHoldsModifiers()) return paste();
    surroundings_.after(nextLook, [this, round = round_] {
        if (round == round_ && rewrite_.stage == Stage::done) handOver();
    });
}

void Assistant::apply() {
    if (canApply(rewrite_)) paste();
}

void Assistant::paste() {
    enter(Stage::applying);
    desktop_.paste(
        rewrite_.text, rewrite_.capture.token,
        [this](bool inPlace, const std::optional<std::string>& failure) { pasted(inPlace, failure); });
}

void Assistant::pasted(bool inPlace, const std::optional<std::string>& failure) {
    if (failure) {
        rewrite_.why = say(phrases::pasteBusy);
        enter(Stage::done);
        if (atOnce_) tellOf(phrases::pasteBusy, true);
        return;
    }
    rewrite_.used = true;
    const bool couldBePutIn = !std::exchange(rewrite_.capture.token, {}).empty();
    enter(inPlace ? Stage::applied : couldBePutIn ? Stage::refused : Stage::copied);
    if (inPlace) return;
    // After a refused paste the host shows its window, which the way without the window hides again. A text
    // that could only be copied is wanted in the person's program next.
    if (couldBePutIn ? atOnce_ : !atOnce_ && rewrite_.capture.source != typedHere) surroundings_.hide();
    if (atOnce_) tellOf(couldBePutIn ? phrases::refused : phrases::waitsOnClipboard, false);
}

void Assistant::copy() {
    if (!canCopy(rewrite_)) return;
    desktop_.paste(rewrite_.text, {}, [this](bool, const std::optional<std::string>& failure) {
        if (failure) return;
        rewrite_.used = true;
        surroundings_.changed();
    });
}

// The token is spent, so the place is read once more.
void Assistant::putBack() {
    constexpr auto captureDeadline = 3s;
    if (!canPutBack(rewrite_) || takingBack_) return;
    takingBack_ = true;
    surroundings_.captureAgain();
    surroundings_.after(captureDeadline, [this, round = ++round_] {
        if (round == round_ && std::exchange(takingBack_, false)) copyOriginal();
    });
}

void Assistant::takeBack(const Capture& capture) {
    const auto text = withOriginalBack(capture, rewrite_);
    if (!text) return copyOriginal();
    desktop_.paste(*text, capture.token, [this](bool inPlace, const std::optional<std::string>&) {
        if (!inPlace) return copyOriginal();
        enter(Stage::takenBack);
    });
}

void Assistant::copyOriginal() {
    desktop_.paste(rewrite_.capture.text, {}, [this](bool, const std::optional<std::string>&) {
        rewrite_.originalCopied = true;
        surroundings_.changed();
    });
}

void Assistant::tellOf(const Phrase& what, bool copy) {
    surroundings_.tell(
        {.title = say(phrases::notPutIn), .body = say(what), .mayShow = true, .mayCopy = copy});
}

} // namespace quillmark
