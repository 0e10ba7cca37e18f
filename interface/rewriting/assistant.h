// What happens between a capture and the text that is put in its place: the one rewrite that is being worked
// on, and every step that the person or the host takes with it. Knows no window. Belongs to the messenger's
// thread.
#pragma once

#include "client/desktop.h"
#include "language/phrase.h"
#include "rewriting/generator.h"
#include "rewriting/history.h"
#include "rewriting/rewrite.h"
#include "rewriting/surroundings.h"
#include "settings/settings.h"

#include <string>

namespace quillmark {

class Assistant {
public:
    Assistant(flutter::BinaryMessenger& messenger, Desktop& desktop, SpellingCorrector spelling,
              const Settings& settings, Surroundings& surroundings);

    const Rewrite& rewrite() const { return rewrite_; }
    const History& history() const { return history_; }

    // From the host.
    void captured(const Capture& capture);
    // A text of the person's own, to try things out.
    void tryOut(const std::string& text);

    // From the person. What the stage does not allow is left undone.
    void use(const Instruction& instruction, const std::string& answer);
    void again();
    void stop();
    void edit(const std::string& text);
    void apply();
    void copy();
    void putBack();
    void reopen(std::size_t entryOfHistory);
    void forgetHistory() { history_.clear(); }
    // After ModelConsent::notAsked has been answered.
    void consentAnswered();

private:
    void begin(const Capture& capture);
    void generate(bool anotherWay);
    void generate(bool anotherWay, ModelConsent consent);
    void enter(Stage stage);
    void finished(const std::string& text);
    void fail(const std::string& sentence);

    void handOver();
    void paste();
    void pasted(bool inPlace, const std::optional<std::string>& failure);
    void takeBack(const Capture& capture);
    void copyOriginal();
    void tellOf(const Phrase& what, bool copy);

    Desktop& desktop_;
    const Settings& settings_;
    Surroundings& surroundings_;
    Generator generator_;
    Rewrite rewrite_;
    History history_;
    bool atOnce_ = false; // this rewrite is put in without the window
    int round_ = 0;       // counts captures and instructions, so that what comes late is known
    bool takingBack_ = false;
};

} // namespace quillmark
