// Has a text rewritten by the host's language model, or its spelling corrected where there is none: one at a
// time, a new one ends the one before. Belongs to the messenger's thread.
#pragma once

#include "client/model.h"

#include <functional>
#include <optional>
#include <string>

namespace quillmark {

// The spelling corrector: one text at a time. Functions that are empty stand for one that is not installed.
struct SpellingCorrector {
    using Take = std::function<void(const std::string& text)>;

    std::function<void(const std::string& text, Take growing, Take done)> correct;
    std::function<void()> cancel; // no more is heard of the text under way
};

class Generator {
public:
    struct Handlers {
        std::function<void(const std::string& soFar)> growing;
        std::function<void(const std::string& text)> done;
        std::function<void(const std::string& sentence)> failed;
        // From here on the spelling corrector is at work.
        std::function<void()> spellingOnly;
    };

    struct Request {
        std::string text = {};
        std::string instructions = {}; // for the model
        bool spellingWillDo = false;
        bool modelAllowed = true;
        bool anotherWay = false; // not the likeliest words, which are the same every time
    };

    Generator(flutter::BinaryMessenger& messenger, SpellingCorrector spelling, Handlers handlers);

    void start(Request request);
    // Nothing more is heard of the text under way.
    void cancel();

private:
    void begin(const std::optional<std::string>& whyNoModel);
    void correctSpelling();
    void handle(const ModelEvent& event);
    void finish(const std::string& reason);

    Handlers handlers_;
    Model model_;
    SpellingCorrector spelling_;
    int requests_ = 0;
    std::string current_; // empty: none runs
    Request request_;
    std::string latest_;
};

} // namespace quillmark
